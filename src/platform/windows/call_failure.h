#pragma once

#include <windows.h>
#include <oleauto.h>

#include "com_support/exception_info.h"
#include "platform/component_error.h"

namespace kwo::platform::windows {

/// Raises the error that automation clients show for a failure code: the errors of the language's run-time for the
/// standard codes, else the code with the system's text. E_OUTOFMEMORY is std::bad_alloc.
[[noreturn]] void RaiseFailure(HRESULT code);

/// Raises the failure of an early-bound call: the thread's error object if `object` supports one for the interface,
/// else the failure code.
[[noreturn]] void RaiseEarlyBoundFailure(HRESULT code, IUnknown& object, const IID& interfaceId);

/// Raises the failure that an object described, with its number, source and description.
[[noreturn]] void RaiseException(com_support::ExceptionInfo& exception);

}  // namespace kwo::platform::windows
