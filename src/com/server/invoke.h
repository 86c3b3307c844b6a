#pragma once

#include <windows.h>
#include <oleauto.h>

#include "com/server/dispatch_table.h"

namespace kwo::com {

/// IDispatch::Invoke for the interface at `interfacePointer`, which `table` describes.
///
/// Takes arguments as clients really send them: by value, by reference, as a reference to a variant, left out, by name;
/// converts them by the automation rules, and after a successful call writes what came back by reference into the
/// caller's own variable, in the variable's own type: all of it or, when one does not convert, nothing. A member's
/// failure is its HRESULT with the thread's error object set.
///
/// An object is passed as the interface that the member asks for where it has that one, else as its plain IDispatch: a
/// member with such an argument must ask the object before it calls more than IDispatch.
HRESULT InvokeMember(const DispatchTable& table, void* interfacePointer, DISPID id, LCID locale, WORD flags,
                     DISPPARAMS* arguments, VARIANT* result, EXCEPINFO* exception, UINT* badArgument) noexcept;

}  // namespace kwo::com
