#pragma once

#include <windows.h>

namespace kwo::com {

/// What stops a registration; it ends at the entry points, as their result.
struct RegistrationFailure {
    HRESULT reason;
};

inline void ThrowIfFailed(HRESULT result) {
    if (FAILED(result)) throw RegistrationFailure{result};
}

inline void ThrowIfStatus(LSTATUS status) {
    if (status != ERROR_SUCCESS) throw RegistrationFailure{HRESULT_FROM_WIN32(static_cast<DWORD>(status))};
}

}  // namespace kwo::com
