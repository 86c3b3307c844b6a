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

/// An interface of an automation object; the caller owns the reference.
/// Null for the null object, and for a host object that is not an automation object.
/// If the object lacks the interface, raises what QueryInterface returned: mostly E_NOINTERFACE.
template <class Interface>
Interface* NewReference(const platform::HostObjectRef& object) {
    const auto* const known = dynamic_cast<const platform::windows::DispatchReference*>(object.get());
    if (known == nullptr) return nullptr;
    Interface* found = nullptr;
    const HRESULT code = known->Dispatch()->QueryInterface(__uuidof(Interface), reinterpret_cast<void**>(&found));
    if (FAILED(code)) platform::windows::RaiseFailure(code);
    return found;
}

/// Raises E_POINTER if an argument of an early-bound call is null, even one that the member does not use.
/// Call it first in a member, so that a bad call changes nothing.
template <class... Types>
void RequireAll(Types*... arguments) {
    (static_cast<void>(Required(arguments)), ...);
}

/// An optional argument of an early-bound call; a null pointer counts as Missing. Raises what FromVariant raises.
inline platform::Variant OptionalValue(const VARIANT* argument) {
    return argument != nullptr ? platform::windows::FromVariant(*argument) : platform::Missing();
}

/// Writes `value` where the caller left out an optional argument: into the variable that `argument` is or refers to.
/// Does nothing for a variable that holds something, and for a reference to an error value, which has no room. `value`
/// must own nothing.
inline void FillIn(VARIANT& argument, const VARIANT& value) {
    VARIANT* const variable = com_support::Innermost(&argument);
    if (variable != nullptr && variable->vt == VT_ERROR) *variable = value;
}

}  // namespace kwo::com
