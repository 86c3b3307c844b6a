// Saves keys of the registry with everything below them, as text under Wine.
//   save_key FILE KEY     below HKEY_CURRENT_USER if KEY begins with HKCU, else below HKEY_LOCAL_MACHINE
// The exit code is 0, 2 if there is no such key, or 1 if it cannot be saved. FILE must not exist.
#include <windows.h>

#include <cstdio>
#include <cwchar>

int wmain(int count, wchar_t** words) {
    if (count != 3 || wcslen(words[2]) < 6) return 1;
    const HKEY root = wcsncmp(words[2], L"HKCU\\", 5) == 0 ? HKEY_CURRENT_USER : HKEY_LOCAL_MACHINE;
    HKEY key = nullptr;
    if (RegOpenKeyExW(root, words[2] + 5, 0, KEY_READ, &key) != ERROR_SUCCESS) {
        std::puts("There is no such key.");
        return 2;
    }

    HANDLE token = nullptr;
    if (!OpenProcessToken(GetCurrentProcess(), TOKEN_ADJUST_PRIVILEGES, &token)) return 1;
    TOKEN_PRIVILEGES privileges = {};
    privileges.PrivilegeCount = 1;
    privileges.Privileges[0].Attributes = SE_PRIVILEGE_ENABLED;
    LookupPrivilegeValueW(nullptr, L"SeBackupPrivilege", &privileges.Privileges[0].Luid);
    AdjustTokenPrivileges(token, FALSE, &privileges, 0, nullptr, nullptr);
    return RegSaveKeyW(key, words[1], nullptr) == ERROR_SUCCESS ? 0 : 1;
}
