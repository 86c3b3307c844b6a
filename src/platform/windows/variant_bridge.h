#pragma once

#include <windows.h>
#include <oleauto.h>

#include <cstdint>
#include <utility>

#include "platform/variant.h"

namespace kwo::platform::windows {

/// A VARIANT together with the ownership of what it holds.
class OwnedVariant {
public:
    OwnedVariant() { ::VariantInit(&mValue); }
    /// Takes over what `value` owns.
    explicit OwnedVariant(const VARIANT& value) : mValue(value) {}
    OwnedVariant(OwnedVariant&& other) noexcept : mValue(other.Detach()) {}
    OwnedVariant& operator=(OwnedVariant&& other) noexcept {
        if (this != &other) {
            ::VariantClear(&mValue);
            mValue = other.Detach();
        }
        return *this;
    }
    ~OwnedVariant() { ::VariantClear(&mValue); }

    VARIANT& Get() { return mValue; }
    const VARIANT& Get() const { return mValue; }
    /// Where a call puts a value that it hands over.
    VARIANT* Out() {
        ::VariantClear(&mValue);
        return &mValue;
    }
    /// Hands the value over to the caller.
    VARIANT Detach() {
        const VARIANT value = mValue;
        ::VariantInit(&mValue);
        return value;
    }

private:
    VARIANT mValue;
};

/// A copied VARIANT of a kind that the logic has no use for.
class WindowsForeignValue final : public ForeignValue {
public:
    explicit WindowsForeignValue(OwnedVariant value) : mValue(std::move(value)) {}
    const VARIANT& Get() const { return mValue.Get(); }

private:
    OwnedVariant mValue;
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

/// What automation clients show for a failure code: the run-time's own errors are 0x800A0000 + their number.
std::int32_t ErrorNumber(SCODE code);

/// The value for the outside, which the caller owns: text copied, objects with a reference counted for the caller.
/// Raises std::bad_alloc, and TypeMismatch for an object that is no automation object.
VARIANT ToVariant(const Variant& value);

/// A value from the outside, which stays the caller's. References are followed, also those to a variant that is one
/// itself. Raises TypeMismatch for a null reference and for what automation cannot copy.
Variant FromVariant(const VARIANT& value);

}  // namespace kwo::platform::windows
