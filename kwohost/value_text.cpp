#include "value_text.h"

#include "com_support/variant_conversion.h"

namespace kwohost {

namespace {

constexpr int kMostNestedDefaults = 8;

/// The value behind an object's default member, which may be an object again.
OwnedVariant DefaultValue(const VARIANT& object) {
    OwnedVariant value = Copied(object);
    for (int depth = 0; value.vt == VT_DISPATCH || value.vt == VT_UNKNOWN; ++depth) {
        ComPtr<IDispatch> inner;
        if (!value.punkVal) Fail(RuntimeError::NoObjectSet, L"Object variable not set");
        if (depth == kMostNestedDefaults || FAILED(value.punkVal->QueryInterface(IID_PPV_ARGS(inner.Out()))))
            Fail(RuntimeError::NoSuchMember, L"The object has no text");
        DISPPARAMS none = {};
        const HRESULT got = inner->Invoke(DISPID_VALUE, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYGET, &none,
                                          value.Out(), nullptr, nullptr);
        if (FAILED(got)) Fail(RuntimeError::NoSuchMember, L"The object has no text");
    }
    return value;
}

std::wstring SimpleText(OwnedVariant& value, Language language) {
    const bool isJScript = language == Language::JScript;
    switch (value.vt) {
        case VT_EMPTY:
            return isJScript ? L"undefined" : L"";
        case VT_NULL:
            return isJScript ? L"null" : L"Null";
        case VT_BOOL:
            if (isJScript) return value.boolVal ? L"true" : L"false";
            return value.boolVal ? L"True" : L"False";
        case VT_ERROR:
            return value.scode == DISP_E_PARAMNOTFOUND ? L"" : L"Error " + std::to_wstring(value.scode);
        default:
            break;
    }
    const LCID locale = isJScript ? LOCALE_INVARIANT : LOCALE_USER_DEFAULT;
    if (FAILED(kwo::com_support::Convert(value, value, VT_BSTR, locale)))
        Fail(RuntimeError::TypeMismatch, L"Type mismatch: the value has no text");
    return std::wstring(View(value.bstrVal));
}

}  // namespace

std::wstring ValueText(const VARIANT& value, Language language) {
    OwnedVariant plain = DefaultValue(value);
    return SimpleText(plain, language);
}

}  // namespace kwohost
