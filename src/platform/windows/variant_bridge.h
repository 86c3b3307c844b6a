#pragma once

#include <windows.h>
#include <oleauto.h>

#include <cstdint>
#include <utility>

#include "com_support/owned_variant.h"
#include "platform/variant.h"

namespace kwo::platform::windows {

/// A copy of a VARIANT that the logic only passes on.
class WindowsForeignValue final : public ForeignValue {
public:
    /// Owns `value`.
    explicit WindowsForeignValue(com_support::OwnedVariant value) : mValue(std::move(value)) {}
    /// The value, valid as long as this object.
    const VARIANT& Get() const { return mValue; }

private:
    com_support::OwnedVariant mValue;
};

/// A host object that is an automation object.
class DispatchReference : public HostObject {
public:
    /// The automation object, never null. The caller gets no reference of its own.
    virtual IDispatch* Dispatch() const = 0;
};

/// A host object for `dispatch`, with a reference of its own; the null object for null.
HostObjectRef MakeHostObject(IDispatch* dispatch);

/// Raises the error of a failed conversion or copy: Overflow, std::bad_alloc or, for any other failure, TypeMismatch.
/// Does nothing on success.
void RaiseIfNotConverted(HRESULT result);

/// The number that automation clients show for a failure code. The errors of the language's run-time are 0x800A0000 +
/// number.
std::int32_t ErrorNumber(SCODE code);

/// The value as a VARIANT, which the caller owns. Raises std::bad_alloc, and TypeMismatch for an object that is not an
/// automation object.
VARIANT ToVariant(const Variant& value);

/// The value of a VARIANT, which the caller keeps. References are followed, even several levels of them. Raises
/// TypeMismatch for a null reference and for a value that automation cannot copy.
Variant FromVariant(const VARIANT& value);

}  // namespace kwo::platform::windows
