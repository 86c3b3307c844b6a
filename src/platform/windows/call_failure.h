#pragma once

#include <windows.h>
#include <oleauto.h>

#include "com_support/exception_info.h"
#include "platform/component_error.h"

namespace kwo::platform::windows {

/// Raises what automation clients show for a failure code: the run-time's own errors for the standard ones, else the
/// code with the system's text.
[[noreturn]] void RaiseFailure(HRESULT code);

/// Raises the failure of an early-bound call: what `object` left as the thread's error object, if it leaves such for
/// the interface, else the failure code.
[[noreturn]] void RaiseEarlyBoundFailure(HRESULT code, IUnknown& object, const IID& interfaceId);

/// Raises what an object told about a failure of its own, with its number, source and description.
[[noreturn]] void RaiseException(com_support::ExceptionInfo& exception);

}  // namespace kwo::platform::windows
