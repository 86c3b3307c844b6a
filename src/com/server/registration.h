#pragma once

#include <windows.h>

#include <string>

#include "com/server/registration_store.h"

namespace kwo::com {

enum class Scope {
    kMachine,  ///< for everyone on this computer; needs an administrator's rights
    kUser      ///< for the user who calls
};

/// Registers the classes of the type library inside `module`. If it fails, it undoes everything and returns the reason.
/// It takes over a programmatic identifier of another vendor's class; unregistering gives the identifier back.
HRESULT Register(HINSTANCE module, Scope scope) noexcept;

/// Removes what Register wrote for this file. Leaves the registration of another copy, another version or the other
/// bitness. If it fails, it undoes everything.
HRESULT Unregister(HINSTANCE module, Scope scope) noexcept;

/// The same in any store, below the key `classes`, which is "Software\Classes" in the registry.
HRESULT Register(HINSTANCE module, RegistrationStore& store, const std::wstring& classes) noexcept;
HRESULT Unregister(HINSTANCE module, RegistrationStore& store, const std::wstring& classes) noexcept;

}  // namespace kwo::com
