#pragma once

#include <ole2.h>

#include <string>
#include <string_view>
#include <utility>

#include "com_ptr.h"

namespace kwohost {

/// Numbers that script authors know from the language's own run-time.
enum class RuntimeError : unsigned short {
    InvalidCall = 5,
    SubscriptOutOfRange = 9,
    TypeMismatch = 13,
    OutOfStackSpace = 28,
    DeviceError = 57,
    NoObjectSet = 91,
    ObjectRequired = 424,
    CannotCreateObject = 429,
    NoDefaultMember = 438,
    NoEvents = 459,
};

constexpr HRESULT ToResult(RuntimeError error) {
    return MAKE_HRESULT(SEVERITY_ERROR, FACILITY_CONTROL, static_cast<unsigned short>(error));
}

/// A failure on its way to the script. One with an empty description is a standard automation code: the language
/// has its own words for it.
struct ScriptFailure {
    HRESULT code = E_FAIL;
    std::wstring description = {};
};

[[noreturn]] inline void Fail(HRESULT code) {
    throw ScriptFailure{code};
}
[[noreturn]] inline void Fail(RuntimeError error, std::wstring description) {
    throw ScriptFailure{ToResult(error), std::move(description)};
}
inline void Check(HRESULT result) {
    if (FAILED(result)) Fail(result);
}

/// Owns what it holds.
class Variant : public VARIANT {
public:
    Variant() noexcept { VariantInit(this); }
    /// A copy by value, through every level of reference.
    explicit Variant(const VARIANT& other) : Variant() { Check(VariantCopyInd(this, const_cast<VARIANT*>(&other))); }
    Variant(Variant&& other) noexcept : VARIANT(other) { VariantInit(&other); }
    Variant(const Variant&) = delete;
    Variant& operator=(const Variant&) = delete;
    Variant& operator=(Variant&&) = delete;
    ~Variant() { VariantClear(this); }

    /// Hands the content over and keeps nothing.
    VARIANT Detach() noexcept {
        const VARIANT content = *this;
        VariantInit(this);
        return content;
    }
};

/// Owns what a call put into it.
class Bstr {
public:
    Bstr() = default;
    explicit Bstr(BSTR text) : mText(text) {}
    explicit Bstr(std::wstring_view text) : mText(SysAllocStringLen(text.data(), static_cast<UINT>(text.size()))) {
        if (!mText) Fail(E_OUTOFMEMORY);
    }
    Bstr(const Bstr&) = delete;
    Bstr& operator=(const Bstr&) = delete;
    ~Bstr() { SysFreeString(mText); }

    BSTR* Receive() { return &mText; }
    BSTR Get() const { return mText; }
    BSTR Detach() { return std::exchange(mText, nullptr); }
    std::wstring_view View() const { return {mText ? mText : L"", SysStringLen(mText)}; }

private:
    BSTR mText = nullptr;
};

}  // namespace kwohost
