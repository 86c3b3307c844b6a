#pragma once

#include "platform/mouse.h"

namespace kwo::platform::windows {

class WindowsMouse final : public Mouse {
public:
    bool IsHeld() override;
    bool WasPressed() override;
};

}  // namespace kwo::platform::windows
