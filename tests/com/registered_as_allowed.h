#pragma once

#include "dll_under_test.h"
#include "rights.h"

namespace kwo::com_test {

/// Registers the DLL for everybody or, without the rights, for the user.
inline HRESULT RegisterAsAllowed(const Library& library) {
    return MayRegisterForAll() ? library.RegisterServer() : library.Install(true, L"user");
}
inline HRESULT UnregisterAsAllowed(const Library& library) {
    return MayRegisterForAll() ? library.UnregisterServer() : library.Install(false, L"user");
}

}  // namespace kwo::com_test
