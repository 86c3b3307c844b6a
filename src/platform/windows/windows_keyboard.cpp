#include "platform/windows/windows_keyboard.h"

#include <vector>

namespace kwo::platform::windows {

namespace {

INPUT Key(WORD code, DWORD flags) {
    INPUT input = {};
    input.type = INPUT_KEYBOARD;
    input.ki.wVk = code;
    input.ki.wScan = static_cast<WORD>(::MapVirtualKeyW(code, MAPVK_VK_TO_VSC));
    input.ki.dwFlags = flags;
    return input;
}

}  // namespace

void WindowsKeyboard::SendTab(bool backwards) {
    std::vector<INPUT> inputs;
    if (backwards) inputs.push_back(Key(VK_SHIFT, 0));
    inputs.push_back(Key(VK_TAB, 0));
    inputs.push_back(Key(VK_TAB, KEYEVENTF_KEYUP));
    if (backwards) inputs.push_back(Key(VK_SHIFT, KEYEVENTF_KEYUP));
    mLastError.After(::SendInput(static_cast<UINT>(inputs.size()), inputs.data(), sizeof(INPUT)));
}

}  // namespace kwo::platform::windows
