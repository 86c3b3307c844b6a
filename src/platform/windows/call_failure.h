#pragma once

#include <windows.h>
#include <oleauto.h>

#include "com_support/com_ptr.h"
#include "com_support/exception_info.h"
#include "platform/component_error.h"

namespace kwo::platform::windows {

/// Raises the error that automation clients show for a failure code.
/// The standard codes become the errors of the language's run-time: 6, 13, 438, 446, 448, 449 and 450. Any other code
/// becomes ErrorNumber with the system's text for it. E_OUTOFMEMORY is std::bad_alloc.
/// Does not look at the thread's error object; the source is empty.
[[noreturn]] void RaiseFailure(HRESULT code);

/// Raises the failure of an early-bound call: what the thread's error object says if `object` supports one for the
/// interface, else as RaiseFailure does.
///
///     const HRESULT code = picture->get_Type(&type);
///     if (FAILED(code)) RaiseEarlyBoundFailure(code, *picture, IID_IPicture);
///
/// Call it directly after the call. The error object is taken from the thread in either case.
[[noreturn]] void RaiseEarlyBoundFailure(HRESULT code, IUnknown& object, const IID& interfaceId);

/// The failure of a script's object that answers a call with a code alone.
/// The host of the script may have left the texts of the error on the thread.
///
///     const ScriptObjectFailure failure;
///     const HRESULT code = object->Invoke(id, IID_NULL, locale, flags, &parameters, &result, &exception, nullptr);
///     if (FAILED(code) && code != DISP_E_EXCEPTION) failure.Raise(code);
class ScriptObjectFailure {
public:
    /// Make it before the call: an error object that the thread has by then is about something else.
    ScriptObjectFailure();
    /// Raises the error with the texts of an error object that the call has left on the thread. It stays there.
    /// Without one, and for the standard codes, the same as RaiseFailure.
    [[noreturn]] void Raise(HRESULT code) const;

private:
    com_support::ComPtr<IErrorInfo> mBefore;
};

/// Raises the failure that an object described in answer to a late-bound call (DISP_E_EXCEPTION), with its number,
/// source, description and help.
/// Asks the object for texts that it has put off. An object that gives no number raises 0x80020009. E_OUTOFMEMORY is
/// std::bad_alloc.
[[noreturn]] void RaiseException(com_support::ExceptionInfo& exception);

}  // namespace kwo::platform::windows
