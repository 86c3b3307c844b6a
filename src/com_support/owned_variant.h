#pragma once

#include <windows.h>
#include <oleauto.h>

#include <utility>

namespace kwo::com_support {

/// A VARIANT that owns what it holds: a string, an array, a reference to an object. What it only refers to (VT_BYREF)
/// stays somebody else's. It begins empty.
class OwnedVariant : public VARIANT {
public:
    OwnedVariant() noexcept : VARIANT{} {}
    /// Leaves `other` empty.
    OwnedVariant(OwnedVariant&& other) noexcept : VARIANT(other.Detach()) {}
    OwnedVariant& operator=(OwnedVariant&& other) noexcept {
        // The old value goes last: an object may call back while it is released.
        std::swap(static_cast<VARIANT&>(*this), static_cast<VARIANT&>(other));
        if (this != &other) other.Clear();
        return *this;
    }
    ~OwnedVariant() { Clear(); }

    /// Takes over what `value` owns.
    static OwnedVariant Adopt(const VARIANT& value) noexcept { return OwnedVariant(value); }

    /// Frees what it holds; it is empty then.
    void Clear() noexcept {
        if (vt != VT_EMPTY) ::VariantClear(this);
    }
    /// Where a call puts a value that it hands over. Frees what was held.
    VARIANT* Out() noexcept {
        Clear();
        return this;
    }
    /// Hands the value over to the caller and is empty from then on.
    [[nodiscard]] VARIANT Detach() noexcept {
        const VARIANT value = *this;
        ::VariantInit(this);
        return value;
    }

protected:
    explicit OwnedVariant(const VARIANT& value) noexcept : VARIANT(value) {}
};

}  // namespace kwo::com_support
