#pragma once

#include "platform/mouse.h"

namespace kwo::platform::simulated {

/// A mouse whose button a test presses and releases. Nothing here is logged or can fail.
class SimulatedMouse final : public Mouse {
public:
    bool IsHeld() override { return isHeld; }
    bool WasPressed() override { return wasPressed; }

    bool isHeld = false;
    bool wasPressed = false;
};

}  // namespace kwo::platform::simulated
