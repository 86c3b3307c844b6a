#pragma once

#include <windows.h>

namespace kwo::com_test {

/// Whether this program may register for everybody. Under Wine it may, on Windows an administrator's programs may.
/// Without the rights the programs of tests register for the user, and skip what is about the machine.
inline bool MayRegisterForAll() {
    HKEY classes = nullptr;
    const LSTATUS status = RegOpenKeyExW(HKEY_LOCAL_MACHINE, L"Software\\Classes", 0,
                                         KEY_READ | KEY_CREATE_SUB_KEY | KEY_SET_VALUE, &classes);
    if (status == ERROR_SUCCESS) RegCloseKey(classes);
    return status == ERROR_SUCCESS;
}

constexpr char kNeedsRights[] = "needs an administrator's rights";

}  // namespace kwo::com_test
