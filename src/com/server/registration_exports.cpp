// The registration functions that the system's tools call.

#include <windows.h>

#include <olectl.h>

#include <optional>

#include "com/server/module.h"
#include "com/server/registration.h"

using kwo::com::ThisModule;

namespace {

/// Nothing for an unknown word: a typing mistake must not register for all users.
std::optional<kwo::com::Scope> ScopeOf(LPCWSTR commandLine) {
    if (commandLine == nullptr || *commandLine == L'\0') return kwo::com::Scope::kMachine;
    const auto is = [commandLine](LPCWSTR word) {
        return CompareStringOrdinal(commandLine, -1, word, -1, TRUE) == CSTR_EQUAL;
    };
    if (is(L"user")) return kwo::com::Scope::kUser;
    if (is(L"machine")) return kwo::com::Scope::kMachine;
    return std::nullopt;
}

}  // namespace

STDAPI DllRegisterServer() {
    return kwo::com::Register(ThisModule(), kwo::com::Scope::kMachine);
}

STDAPI DllUnregisterServer() {
    return kwo::com::Unregister(ThisModule(), kwo::com::Scope::kMachine);
}

/// regsvr32 /n /i:user registers for the current user and needs no rights; /i:machine and /i register for the whole
/// machine.
STDAPI DllInstall(BOOL install, LPCWSTR commandLine) {
    const std::optional<kwo::com::Scope> scope = ScopeOf(commandLine);
    if (!scope) return E_INVALIDARG;
    return install != FALSE ? kwo::com::Register(ThisModule(), *scope) : kwo::com::Unregister(ThisModule(), *scope);
}
