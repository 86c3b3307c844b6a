#pragma once

#include "platform/mouse.h"

namespace kwo::platform::windows {

/// The state of the button by the system's two tables: the device's (GetAsyncKeyState) and the thread's (GetKeyState).
class WindowsMouse final : public Mouse {
public:
    bool IsHeld() override;
    bool WasPressed() override;
};

}  // namespace kwo::platform::windows
