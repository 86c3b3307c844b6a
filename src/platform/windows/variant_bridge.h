#pragma once

#include <windows.h>
#include <oleauto.h>

#include <cstdint>
#include <utility>

#include "com_support/owned_variant.h"
#include "platform/variant.h"

namespace kwo::platform::windows {

/// A copy of a VARIANT that the logic only passes on: a decimal, an array of another type, an object without late
/// binding.
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
/// Every object that comes from the host is one; services that need the system's interface cast to it.
class DispatchReference : public HostObject {
public:
    /// The automation object, never null. The caller gets no reference of its own.
    virtual IDispatch* Dispatch() const = 0;
};

/// A host object for `dispatch`, with a reference of its own; the null object for null.
/// Two calls make two host objects, which IsSameAs calls the same.
HostObjectRef MakeHostObject(IDispatch* dispatch);

/// Raises the error of a failed conversion or copy: Overflow for DISP_E_OVERFLOW, std::bad_alloc for E_OUTOFMEMORY,
/// TypeMismatch for any other failure.
/// Does nothing on success.
void RaiseIfNotConverted(HRESULT result);

/// The number that automation clients show for a failure code: n for 0x800A0000 + n (n from 1 to 65,535), else the
/// code itself.
std::int32_t ErrorNumber(SCODE code);

/// The value as a VARIANT, which the caller clears:
///
///     OwnedVariant cell = OwnedVariant::Adopt(ToVariant(value));
///
/// Objects get a reference, texts and arrays are copied. The null object is VT_DISPATCH with null; a run-time error is
/// 0x800A0000 + its number.
/// Raises std::bad_alloc, and TypeMismatch for an object that is not an automation object.
VARIANT ToVariant(const Variant& value);

/// The value of a VARIANT, which the caller keeps.
/// References are followed, even several levels of them, and what they lead to is copied.
/// A value of another type than those of Variant becomes a ForeignRef.
/// Raises TypeMismatch for a null reference and for a value that automation cannot copy, and std::bad_alloc.
Variant FromVariant(const VARIANT& value);

}  // namespace kwo::platform::windows
