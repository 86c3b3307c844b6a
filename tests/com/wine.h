#pragma once

#include <windows.h>

namespace kwo::com_test {

/// True under Wine. Where Wine differs from Windows, a test says what it does there, so that it fails when that
/// changes.
inline bool IsWine() {
    return GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "wine_get_version") != nullptr;
}

}  // namespace kwo::com_test
