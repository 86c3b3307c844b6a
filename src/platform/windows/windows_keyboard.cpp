#include "platform/windows/windows_keyboard.h"

#include <algorithm>
#include <iterator>
#include <vector>

namespace kwo::platform::windows {

namespace {

/// Both keys of a kind: the system knows left from right where it is asked for one of them.
constexpr WORD kModifiers[] = {VK_LSHIFT, VK_RSHIFT, VK_LCONTROL, VK_RCONTROL, VK_LMENU, VK_RMENU, VK_LWIN, VK_RWIN};
/// A key that means nothing. Pressed while Alt or the logo key is down, it keeps their release from opening a menu.
constexpr WORD kNothing = 0xE8;

INPUT Key(WORD code, DWORD flags) {
    INPUT input = {};
    input.type = INPUT_KEYBOARD;
    input.ki.wVk = code;
    input.ki.wScan = static_cast<WORD>(::MapVirtualKeyW(code, MAPVK_VK_TO_VSC));
    input.ki.dwFlags = flags;
    switch (code) {
        case VK_RCONTROL:
        case VK_RMENU:
        case VK_LWIN:
        case VK_RWIN:
            input.ki.dwFlags |= KEYEVENTF_EXTENDEDKEY;
    }
    return input;
}

std::vector<WORD> HeldModifiers() {
    std::vector<WORD> held;
    std::ranges::copy_if(kModifiers, std::back_inserter(held), [](WORD key) { return ::GetAsyncKeyState(key) < 0; });
    return held;
}

}  // namespace

void WindowsKeyboard::SendTab(bool backwards) {
    std::vector<INPUT> inputs;
    const std::vector<WORD> held = HeldModifiers();
    for (const WORD key : held)
        inputs.push_back(Key(key, KEYEVENTF_KEYUP));
    if (backwards) inputs.push_back(Key(VK_SHIFT, 0));
    inputs.push_back(Key(VK_TAB, 0));
    inputs.push_back(Key(VK_TAB, KEYEVENTF_KEYUP));
    if (backwards) inputs.push_back(Key(VK_SHIFT, KEYEVENTF_KEYUP));
    for (const WORD key : held)
        inputs.push_back(Key(key, 0));
    if (!held.empty()) {
        inputs.push_back(Key(kNothing, 0));
        inputs.push_back(Key(kNothing, KEYEVENTF_KEYUP));
    }
    mLastError.After(::SendInput(static_cast<UINT>(inputs.size()), inputs.data(), sizeof(INPUT)));
}

}  // namespace kwo::platform::windows
