#pragma once

#include <windows.h>
#include <oleauto.h>

#include "com/server/dispatch_table.h"

namespace kwo::com {

/// IDispatch::Invoke for the interface at `interfacePointer`, which `table` describes.
///
/// Accepts arguments in every form that clients send: by value, by reference, as a reference to a variant, by name, or
/// left out. Converts them by the rules of automation. After a successful call it writes changed by-reference arguments
/// into the caller's variables, in the types of the variables: all of them or, if one cannot be converted, none. If the
/// member fails, the result is its HRESULT, and the thread's error object is set.
///
/// An object is passed as the interface of the parameter if it has that one, else as its plain IDispatch. So a member
/// with such an argument must query the interface before it calls more than IDispatch.
HRESULT InvokeMember(const DispatchTable& table, void* interfacePointer, DISPID id, LCID locale, WORD flags,
                     DISPPARAMS* arguments, VARIANT* result, EXCEPINFO* exception, UINT* badArgument) noexcept;

}  // namespace kwo::com
