#pragma once

#include <windows.h>

namespace kwo::com {

/// Stops a registration. The entry points catch it and return its code.
struct RegistrationFailure {
    /// A failure code.
    HRESULT reason;
};

/// Throws for a failure code; does nothing for a success, whichever it is.
inline void ThrowIfFailed(HRESULT result) {
    if (FAILED(result)) throw RegistrationFailure{result};
}

/// Throws for any Windows status but success, as the HRESULT of that status.
inline void ThrowIfStatus(LSTATUS status) {
    if (status != ERROR_SUCCESS) throw RegistrationFailure{HRESULT_FROM_WIN32(static_cast<DWORD>(status))};
}

}  // namespace kwo::com
