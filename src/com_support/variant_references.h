#pragma once

#include <windows.h>
#include <oleauto.h>

#include <cstddef>

namespace kwo::com_support {

inline constexpr VARTYPE kVariantReference = VT_BYREF | VT_VARIANT;

/// How many references to variants are followed, one behind the other. Nobody nests them on purpose; a variant that
/// refers to itself would have no end.
inline constexpr int kMostNestedReferences = 16;

/// The first of `variant`, the variant that it refers to, the one that this refers to and so on that is wanted. Null
/// when none is, and for null.
template <class AnyVariant, class IsWanted>
AnyVariant* FirstReferred(AnyVariant* variant, IsWanted&& isWanted) {
    for (int followed = 0; variant != nullptr && followed <= kMostNestedReferences; ++followed) {
        if (isWanted(*variant)) return variant;
        variant = variant->vt == kVariantReference ? variant->pvarVal : nullptr;
    }
    return nullptr;
}

/// The variant at the end of all references to variants: `variant` itself when it is no such reference. Null when they
/// lead nowhere or are nested too deep. What it returns may still be a reference to a value, such as VT_BYREF | VT_I4.
inline const VARIANT* Innermost(const VARIANT* variant) {
    return FirstReferred(variant, [](const VARIANT& at) { return at.vt != kVariantReference; });
}
inline VARIANT* Innermost(VARIANT* variant) {
    return const_cast<VARIANT*>(Innermost(static_cast<const VARIANT*>(variant)));
}

/// True for an argument that the caller left out, also where a variable says so.
bool IsMissing(const VARIANT& value);

/// True for an object that is not there, passed by value or by reference.
bool IsNullObject(const VARIANT& value);

/// How many bytes a value of `type` takes, in a variant and where a reference leads. 0 for a type that no reference
/// leads to, and for VT_DECIMAL, which lies elsewhere in a variant: it has a case of its own in what follows.
std::size_t StorageSize(VARTYPE type);

/// Makes `value` the value that `reference` (VT_BYREF | a type) leads to. It is seen, not copied: what it owns stays
/// its owner's. False, and `value` is unchanged, when the reference is null or of a type that cannot be referred to.
[[nodiscard]] bool SeeReferred(const VARIANT& reference, VARIANT& value);

/// Exchanges the value that `reference` leads to for `value`, which must be of that type. Nothing is freed: what was
/// there is `value`'s afterwards. False, and nothing is changed, when the type cannot be referred to.
bool ExchangeReferred(const VARIANT& reference, VARIANT& value);

}  // namespace kwo::com_support
