#pragma once

#include "platform/mouse.h"

namespace kwo::platform::windows {

/// The state of the button by the system's two tables: the device's (GetAsyncKeyState) and the thread's (GetKeyState).
/// The device's table counts physical buttons, so the user's swap is undone; the thread's table counts functions.
class WindowsMouse final : public Mouse {
public:
    /// GetAsyncKeyState of the physical button that acts as the left one (SM_SWAPBUTTON).
    bool IsHeld() override;
    /// GetKeyState of VK_LBUTTON.
    bool WasPressed() override;
};

}  // namespace kwo::platform::windows
