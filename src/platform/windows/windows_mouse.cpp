#include "platform/windows/windows_mouse.h"

#include <windows.h>

namespace kwo::platform::windows {

namespace {

/// The key codes are for the physical buttons; the user may have swapped them.
int LeftButton() {
    return ::GetSystemMetrics(SM_SWAPBUTTON) != 0 ? VK_RBUTTON : VK_LBUTTON;
}

}  // namespace

bool WindowsMouse::IsHeld() {
    return ::GetAsyncKeyState(LeftButton()) < 0;
}

bool WindowsMouse::WasPressed() {
    // Messages name the button after its function.
    return ::GetKeyState(VK_LBUTTON) < 0;
}

}  // namespace kwo::platform::windows
