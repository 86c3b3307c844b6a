#pragma once

#include <windows.h>
#include <oleauto.h>

#include <cstddef>

namespace kwo::com_support {

/// The tag of a reference to a variant, as scripts pass their variables.
inline constexpr VARTYPE kVariantReference = VT_BYREF | VT_VARIANT;

/// How many levels of references to variants are followed.
/// Nobody nests them on purpose, but a variant may refer to itself.
inline constexpr int kMostNestedReferences = 16;

/// Follows the references from `variant` and returns the first variant that is wanted.
/// Null if none is, and for null. `isWanted` is asked about `variant` itself first.
template <class AnyVariant, class IsWanted>
AnyVariant* FirstReferred(AnyVariant* variant, IsWanted&& isWanted) {
    for (int followed = 0; variant != nullptr && followed <= kMostNestedReferences; ++followed) {
        if (isWanted(*variant)) return variant;
        variant = variant->vt == kVariantReference ? variant->pvarVal : nullptr;
    }
    return nullptr;
}

/// The variant at the end of all references; `variant` itself if it does not refer to a variant.
/// Null if a reference is null or nested too deep, and for null.
/// The result may still refer to a value, such as VT_BYREF | VT_I4.
/// Nothing is copied or counted.
inline const VARIANT* Innermost(const VARIANT* variant) {
    return FirstReferred(variant, [](const VARIANT& at) { return at.vt != kVariantReference; });
}
/// The same for a variable that is to be written.
inline VARIANT* Innermost(VARIANT* variant) {
    return const_cast<VARIANT*>(Innermost(static_cast<const VARIANT*>(variant)));
}

/// True for an argument that the caller left out (DISP_E_PARAMNOTFOUND), even by way of a variable.
bool IsMissing(const VARIANT& value);

/// True for an object that is not there, passed by value or by a reference to an object.
/// A reference to a variant is not followed.
bool IsNullObject(const VARIANT& value);

/// The size in bytes of a value of `type`, in a variant and behind a reference.
/// An array has the size of a pointer.
/// 0 for a type that cannot be referred to, and for VT_DECIMAL, which the callers treat apart because it is elsewhere
/// in a variant.
std::size_t StorageSize(VARTYPE type);

/// Sets `value` to the value behind `reference` (VT_BYREF | a type), without copying what that owns: never clear it.
/// Returns false, and changes nothing, if the reference is null or its type cannot be referred to.
[[nodiscard]] bool SeeReferred(const VARIANT& reference, VARIANT& value);

/// Sets `value` to the value at the end of all references, without copying what that owns: never clear it.
/// Returns false, and changes nothing, if a reference is null, nested too deep, or of a type that cannot be referred
/// to.
///
///     VARIANT value;
///     if (SeeInnermost(argument, value) && value.vt == VT_I4) use(value.lVal);
[[nodiscard]] bool SeeInnermost(const VARIANT& variant, VARIANT& value);

/// Exchanges the value behind `reference`, which must not be null, with `value`, which must have the same type.
/// Frees nothing: `value` then owns the old value. So the variable has its new value before code of an old object
/// runs.
/// Returns false, and changes nothing, if the type cannot be referred to.
bool ExchangeReferred(const VARIANT& reference, VARIANT& value);

}  // namespace kwo::com_support
