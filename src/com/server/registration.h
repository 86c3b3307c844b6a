#pragma once

#include <windows.h>

#include <string>

#include "com/server/registration_store.h"

namespace kwo::com {

enum class Scope {
    kMachine,  ///< for everyone on this computer; needs an administrator's rights
    kUser      ///< for the user who calls
};

/// Makes the classes of the type library inside `module` known to the system. A registration that fails takes back
/// everything it did and gives the reason. A programmatic identifier that names another vendor's class is taken over;
/// the other class gets it back when ours is unregistered.
HRESULT Register(HINSTANCE module, Scope scope) noexcept;

/// Removes what Register wrote for this very file and leaves everything else: another copy's registration, another
/// version's, the other bitness's. A removal that fails takes back everything, too.
HRESULT Unregister(HINSTANCE module, Scope scope) noexcept;

/// The same in any store, below the key `classes` ("Software\Classes").
HRESULT Register(HINSTANCE module, RegistrationStore& store, const std::wstring& classes) noexcept;
HRESULT Unregister(HINSTANCE module, RegistrationStore& store, const std::wstring& classes) noexcept;

}  // namespace kwo::com
