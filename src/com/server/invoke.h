#pragma once

#include <windows.h>
#include <oleauto.h>

#include "com/server/dispatch_table.h"

namespace kwo::com {

/// IDispatch::Invoke for the interface at `interfacePointer`, which `table` describes.
///
/// Accepts arguments in every form that clients send: by value, by reference, as a reference to a variant, by name, or
/// left out. Converts them by the rules of automation, in `locale`. After a successful call it writes changed
/// by-reference arguments into the caller's variables, in the types of the variables: all of them or, if one cannot be
/// converted, none.
///
/// DISP_E_EXCEPTION means that the member has failed; `exception` then has its HRESULT and texts. Any other failure is
/// about the call itself: no such member, or an argument that does not fit or cannot be written back, which
/// `badArgument` names. The member has then not run, unless writing back has failed.
/// `result`, `exception` and `badArgument` may be null. `result` may be a variable that is also an argument.
///
/// An object is passed as the interface of the parameter if it has that one, else as its plain IDispatch. So a member
/// with such an argument must query the interface before it calls more than IDispatch.
/// `interfacePointer` is an interface of COM. Its object lives until the call returns, even if the caller releases it
/// meanwhile: this function adds a reference before it runs code of the caller, and the members do so themselves.
HRESULT InvokeMember(const DispatchTable& table, void* interfacePointer, DISPID id, LCID locale, WORD flags,
                     DISPPARAMS* arguments, VARIANT* result, EXCEPINFO* exception, UINT* badArgument) noexcept;

}  // namespace kwo::com
