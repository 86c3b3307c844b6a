#pragma once

#include <windows.h>
#include <oleauto.h>

#include <string>
#include <string_view>
#include <utility>

namespace kwo::com_support {

/// The characters of an automation string, zero characters included.
/// Null is the empty string.
/// The view is valid as long as the string is; nothing is copied.
inline std::wstring_view View(BSTR string) {
    return {string != nullptr ? string : L"", ::SysStringLen(string)};
}
/// The same characters in the type of the logic.
inline std::u16string TextOf(std::wstring_view characters) {
    return {characters.begin(), characters.end()};
}
/// The same of an automation string. Null gives an empty text.
inline std::u16string ToText(BSTR string) {
    return TextOf(View(string));
}

/// A new automation string with a copy of `text`, which the caller owns and frees with SysFreeString.
/// Every module may free it: the system has one allocator for such strings.
/// Never null, not even for an empty text.
/// Raises std::bad_alloc.
[[nodiscard]] BSTR NewString(std::wstring_view text);
/// The same for text of the logic.
[[nodiscard]] BSTR NewString(std::u16string_view text);

/// Owns an automation string, or none: null.
/// Moving hands the string over; there is no copy by accident.
///
///     Bstr name;
///     info->GetDocumentation(id, name.Out(), nullptr, nullptr, nullptr);
///     use(name.View());
class Bstr {
public:
    Bstr() = default;
    /// A copy of `text`, zero characters included. Raises std::bad_alloc.
    explicit Bstr(std::wstring_view text) : mString(NewString(text)) {}
    /// The same for text of the logic.
    explicit Bstr(std::u16string_view text) : mString(NewString(text)) {}
    /// Takes the string of `other`, which is null then.
    Bstr(Bstr&& other) noexcept : mString(other.Detach()) {}
    /// Frees the string that was held.
    Bstr& operator=(Bstr other) noexcept {
        std::swap(mString, other.mString);
        return *this;
    }
    ~Bstr() { ::SysFreeString(mString); }

    /// Takes over a string that the caller owns; the caller must not free it any more.
    static Bstr Adopt(BSTR string) {
        Bstr owner;
        owner.mString = string;
        return owner;
    }

    /// The string, which stays this owner's; null if it owns none.
    /// Valid until the string is replaced or freed: pass it to calls that only read it.
    BSTR Get() const { return mString; }
    /// Its characters. The view is valid until the string is replaced or freed.
    std::wstring_view View() const { return com_support::View(mString); }
    /// A copy of its characters.
    std::wstring Text() const { return std::wstring(View()); }

    /// Where a call puts a string that it hands over.
    /// Frees what was held. Use the pointer at once: it points into this object.
    BSTR* Out() {
        ::SysFreeString(Detach());
        return &mString;
    }
    /// Where a call finds a string and may replace it. The call must free what it replaces.
    BSTR* InOut() { return &mString; }
    /// Hands the string over to the caller, who frees it, and is null from then on.
    [[nodiscard]] BSTR Detach() { return std::exchange(mString, nullptr); }

private:
    BSTR mString = nullptr;
};

/// Puts a copy of `text` where `string` points and frees what was there.
/// Raises std::bad_alloc; `string` is unchanged then. For by-reference arguments, whose variable belongs to the caller
/// of a member.
void Replace(BSTR& string, std::u16string_view text);

}  // namespace kwo::com_support
