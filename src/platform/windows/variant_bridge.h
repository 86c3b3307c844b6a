#pragma once

#include <windows.h>
#include <oleauto.h>

#include <cstdint>
#include <utility>

#include "com_support/owned_variant.h"
#include "platform/variant.h"

namespace kwo::platform::windows {

/// A copied VARIANT of a kind that the logic has no use for.
class WindowsForeignValue final : public ForeignValue {
public:
    explicit WindowsForeignValue(com_support::OwnedVariant value) : mValue(std::move(value)) {}
    const VARIANT& Get() const { return mValue; }

private:
    com_support::OwnedVariant mValue;
};

/// A host object that is an automation object.
class DispatchReference : public HostObject {
public:
    /// Never null; the object keeps its reference.
    virtual IDispatch* Dispatch() const = 0;
};

/// A host object with a reference of its own to `dispatch`; the null object for null. It is made where such objects
/// are: values hold objects and objects take values, so one of the two is known here by declaration alone.
HostObjectRef MakeHostObject(IDispatch* dispatch);

/// Raises what a failed conversion or copy of a value means to the logic: Overflow, std::bad_alloc or, for any other
/// failure, TypeMismatch. Does nothing on success.
void RaiseIfNotConverted(HRESULT result);

/// What automation clients show for a failure code: the run-time's own errors are 0x800A0000 + their number.
std::int32_t ErrorNumber(SCODE code);

/// The value for the outside, which the caller owns: text copied, objects with a reference counted for the caller.
/// Raises std::bad_alloc, and TypeMismatch for an object that is no automation object.
VARIANT ToVariant(const Variant& value);

/// A value from the outside, which stays the caller's. References are followed, also those to a variant that is one
/// itself. Raises TypeMismatch for a null reference and for what automation cannot copy.
Variant FromVariant(const VARIANT& value);

}  // namespace kwo::platform::windows
