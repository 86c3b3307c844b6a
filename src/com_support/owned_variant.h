#pragma once

#include <windows.h>
#include <oleauto.h>

#include <utility>

namespace kwo::com_support {

/// A VARIANT that owns what it holds: a string, an array, a reference to an object.
/// What it only refers to (VT_BYREF) stays somebody else's. It begins empty.
///
///     OwnedVariant text;
///     if (FAILED(Convert(text, value, VT_BSTR, locale))) return {};
///     return ToText(text.bstrVal);
///
/// It is a VARIANT, so it can be passed wherever a call reads one. Assign to its members only while it is empty.
class OwnedVariant : public VARIANT {
public:
    OwnedVariant() noexcept : VARIANT{} {}
    /// Takes the value of `other`, which is empty then.
    OwnedVariant(OwnedVariant&& other) noexcept : VARIANT(other.Detach()) {}
    /// Takes the value of `other`, which is empty then. Frees what was held, when this already holds the new value.
    OwnedVariant& operator=(OwnedVariant&& other) noexcept {
        // The old value goes last: an object may call back while it is released.
        std::swap(static_cast<VARIANT&>(*this), static_cast<VARIANT&>(other));
        if (this != &other) other.Clear();
        return *this;
    }
    ~OwnedVariant() { Clear(); }

    /// Takes over what `value` owns; the caller must not clear it any more.
    static OwnedVariant Adopt(const VARIANT& value) noexcept { return OwnedVariant(value); }

    /// Frees what it holds; it is empty then. Releasing an object may run code of it.
    void Clear() noexcept {
        if (vt != VT_EMPTY) ::VariantClear(this);
    }
    /// Where a call puts a value that it hands over.
    /// Frees what was held. Use the pointer at once: it points to this object.
    VARIANT* Out() noexcept {
        Clear();
        return this;
    }
    /// Hands the value over to the caller, who clears it, and is empty from then on.
    [[nodiscard]] VARIANT Detach() noexcept {
        const VARIANT value = *this;
        ::VariantInit(this);
        return value;
    }

protected:
    explicit OwnedVariant(const VARIANT& value) noexcept : VARIANT(value) {}
};

}  // namespace kwo::com_support
