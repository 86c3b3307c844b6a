#pragma once

#include <windows.h>

namespace kwo::test_support {

/// Makes a window of this program the one in the foreground, if the system lets it.
/// Windows lets a program do so that has received the latest input: a key that does nothing counts as input.
inline void TakeForeground(HWND window) {
    SetForegroundWindow(window);
    for (int tries = 0; tries < 3 && GetForegroundWindow() != window; ++tries) {
        INPUT key[2] = {};
        key[0].type = key[1].type = INPUT_KEYBOARD;
        // Windows leaves this key to programs and gives it no meaning.
        key[0].ki.wVk = key[1].ki.wVk = 0xE8;
        key[1].ki.dwFlags = KEYEVENTF_KEYUP;
        SendInput(2, key, sizeof key[0]);
        SetForegroundWindow(window);
        Sleep(20);
    }
}

}  // namespace kwo::test_support
