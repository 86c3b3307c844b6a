#include "platform/windows/windows_mouse.h"

#include <windows.h>

namespace kwo::platform::windows {

namespace {

/// The key codes are those of the buttons as they are built; the user may have swapped them.
int LeftButton() {
    return ::GetSystemMetrics(SM_SWAPBUTTON) != 0 ? VK_RBUTTON : VK_LBUTTON;
}

}  // namespace

bool WindowsMouse::IsHeld() {
    return ::GetAsyncKeyState(LeftButton()) < 0;
}

bool WindowsMouse::WasPressed() {
    // The messages know the button by what it acts as.
    return ::GetKeyState(VK_LBUTTON) < 0;
}

}  // namespace kwo::platform::windows
