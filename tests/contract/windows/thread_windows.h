#pragma once

#include <windows.h>

#include <string_view>
#include <vector>

namespace kwo::contract {

inline BOOL CALLBACK AddThreadWindow(HWND window, LPARAM list) {
    wchar_t name[16] = {};
    ::GetClassNameW(window, name, 16);
    const std::wstring_view isOf = name;
    if (isOf != L"IME" && isOf != L"MSCTFIME UI") reinterpret_cast<std::vector<HWND>*>(list)->push_back(window);
    return TRUE;
}

/// The top-level windows of this thread. Those for input methods that the system adds to a thread's first do not
/// count.
inline std::vector<HWND> ThreadWindows() {
    std::vector<HWND> windows;
    ::EnumThreadWindows(::GetCurrentThreadId(), AddThreadWindow, reinterpret_cast<LPARAM>(&windows));
    return windows;
}

}  // namespace kwo::contract
