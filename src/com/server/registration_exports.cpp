// The registration functions that the system's tools call.

#include <windows.h>

#include <olectl.h>

#include <optional>

#include "com/server/module.h"
#include "com/server/registration.h"

using kwo::com::ThisModule;

namespace {

/// Nothing for a word that is not known: a slip of the pen must not register for everyone.
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

/// regsvr32 /n /i:user registers for the caller alone, which takes no rights; /i:machine and /i are for the whole
/// computer.
STDAPI DllInstall(BOOL install, LPCWSTR commandLine) {
    const std::optional<kwo::com::Scope> scope = ScopeOf(commandLine);
    if (!scope) return E_INVALIDARG;
    return install != FALSE ? kwo::com::Register(ThisModule(), *scope) : kwo::com::Unregister(ThisModule(), *scope);
}
