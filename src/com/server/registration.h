#pragma once

#include <windows.h>

#include <string>

#include "com/server/registration_store.h"

namespace kwo::com {

/// For whom classes are registered.
enum class Scope {
    kMachine,  ///< for everyone on this computer; needs an administrator's rights
    kUser      ///< for the user who calls
};

/// Registers the classes of the type library inside `module`: type library, interfaces, classes and programmatic
/// identifiers.
/// Registering twice is the same as once.
/// Returns S_OK. If anything fails, it undoes everything and returns the reason: E_ACCESSDENIED (0x80070005) without
/// the rights.
/// It takes over a programmatic identifier of another vendor's class; unregistering gives the identifier back.
HRESULT Register(HINSTANCE module, Scope scope) noexcept;

/// Removes what Register wrote for this file.
/// Leaves the registration of another copy, another version or the other bitness, and every value that no longer reads
/// as it was written.
/// Returns S_OK, also if nothing was registered. If anything fails, it undoes everything and returns the reason.
HRESULT Unregister(HINSTANCE module, Scope scope) noexcept;

/// The same in any store, below the key `classes`, which is "Software\Classes" in the registry.
/// Tests use a store in memory.
/// `store` may refuse any call: what was done by then is undone through it.
HRESULT Register(HINSTANCE module, RegistrationStore& store, const std::wstring& classes) noexcept;
HRESULT Unregister(HINSTANCE module, RegistrationStore& store, const std::wstring& classes) noexcept;

}  // namespace kwo::com
