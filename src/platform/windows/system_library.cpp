#include "platform/windows/system_library.h"

#include <string>

namespace kwo::platform::windows {

HMODULE SystemLibrary::Load(const wchar_t* name) {
    const HMODULE library = ::LoadLibraryExW(name, nullptr, LOAD_LIBRARY_SEARCH_SYSTEM32);
    if (library != nullptr || ::GetLastError() != ERROR_INVALID_PARAMETER) return library;
    // Systems older than that flag need the full name, and then look in its folder first for what the library needs.
    wchar_t folder[MAX_PATH];
    const UINT length = ::GetSystemDirectoryW(folder, MAX_PATH);
    if (length == 0 || length >= MAX_PATH) return nullptr;
    const std::wstring path = std::wstring(folder, length) + L"\\" + name;
    return ::LoadLibraryExW(path.c_str(), nullptr, LOAD_WITH_ALTERED_SEARCH_PATH);
}

}  // namespace kwo::platform::windows
