#pragma once

#include <windows.h>

namespace kwo::com {

/// Stops a registration. The entry points return its code.
struct RegistrationFailure {
    HRESULT reason;
};

/// Throws for a failure code.
inline void ThrowIfFailed(HRESULT result) {
    if (FAILED(result)) throw RegistrationFailure{result};
}

/// Throws for any Windows status but success.
inline void ThrowIfStatus(LSTATUS status) {
    if (status != ERROR_SUCCESS) throw RegistrationFailure{HRESULT_FROM_WIN32(static_cast<DWORD>(status))};
}

}  // namespace kwo::com
