// The registration functions that the system's tools call.

#include <windows.h>

#include <olectl.h>

#include "com/server/module.h"
#include "com/server/registration.h"

using kwo::com::ThisModule;

namespace {

kwo::com::Scope ScopeOf(LPCWSTR commandLine) {
    const bool user = commandLine != nullptr && CompareStringOrdinal(commandLine, -1, L"user", -1, TRUE) == CSTR_EQUAL;
    return user ? kwo::com::Scope::kUser : kwo::com::Scope::kMachine;
}

}  // namespace

STDAPI DllRegisterServer() {
    return kwo::com::Register(ThisModule(), kwo::com::Scope::kMachine);
}

STDAPI DllUnregisterServer() {
    return kwo::com::Unregister(ThisModule(), kwo::com::Scope::kMachine);
}

/// regsvr32 /n /i:user registers for the caller alone, which takes no rights; any other text is for the whole computer.
STDAPI DllInstall(BOOL install, LPCWSTR commandLine) {
    const kwo::com::Scope scope = ScopeOf(commandLine);
    return install != FALSE ? kwo::com::Register(ThisModule(), scope) : kwo::com::Unregister(ThisModule(), scope);
}
