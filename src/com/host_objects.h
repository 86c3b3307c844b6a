#pragma once

#include <windows.h>
#include <oleauto.h>

#include "com/server/com_values.h"
#include "com/server/error_report.h"
#include "com_support/variant_references.h"
#include "platform/component_error.h"
#include "platform/variant.h"
#include "platform/windows/call_failure.h"
#include "platform/windows/variant_bridge.h"

namespace kwo::com {

/// An interface of an automation object, with a reference for the caller; null for the null object. Raises what the
/// object answers when it does not have it.
template <class Interface>
Interface* NewReference(const platform::HostObjectRef& object) {
    const auto* const known = dynamic_cast<const platform::windows::DispatchReference*>(object.get());
    if (known == nullptr) return nullptr;
    Interface* found = nullptr;
    const HRESULT code = known->Dispatch()->QueryInterface(__uuidof(Interface), reinterpret_cast<void**>(&found));
    if (FAILED(code)) platform::windows::RaiseFailure(code);
    return found;
}

/// Raises E_POINTER when one of the arguments of an early-bound call is null, also one that the member has no use for.
template <class... Types>
void RequireAll(Types*... arguments) {
    (static_cast<void>(Required(arguments)), ...);
}

/// An optional argument: what is not there, also as a null pointer, is Missing.
inline platform::Variant OptionalValue(const VARIANT* argument) {
    return argument != nullptr ? platform::windows::FromVariant(*argument) : platform::Missing();
}

/// Puts `value` where a caller left an optional argument out: into the variable that `argument` is or refers to. A
/// reference to an error has no room for it.
inline void FillIn(VARIANT& argument, const VARIANT& value) {
    VARIANT* const variable = com_support::Innermost(&argument);
    if (variable != nullptr && variable->vt == VT_ERROR) *variable = value;
}

}  // namespace kwo::com
