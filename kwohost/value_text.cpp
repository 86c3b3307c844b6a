#include "value_text.h"

#include <charconv>
#include <cmath>
#include <cstdlib>
#include <iterator>
#include <string_view>

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

/// The shortest digits that are this number and no other, laid out as the language's standard lays them out.
std::wstring JScriptNumber(double number) {
    if (std::isnan(number)) return L"NaN";
    if (number < 0) return L"-" + JScriptNumber(-number);
    if (std::isinf(number)) return L"Infinity";
    if (number == 0) return L"0";
    char text[32];
    *std::to_chars(text, std::end(text) - 1, number, std::chars_format::scientific).ptr = '\0';
    // Such as 1.25e+21.
    const std::string_view scientific = text;
    const std::size_t mark = scientific.find('e');
    std::wstring digits;
    for (const char character : scientific.substr(0, mark))
        if (character != '.') digits += static_cast<wchar_t>(character);
    const int exponent = std::atoi(text + mark + 1);
    const int count = static_cast<int>(digits.size());
    // Where the decimal point stands, counted from the first digit.
    const int point = exponent + 1;
    constexpr int kMostWholeDigits = 21;
    constexpr int kMostZeros = 6;
    if (point > kMostWholeDigits || point <= -kMostZeros) {
        if (count > 1) digits.insert(1, L".");
        return digits + (exponent < 0 ? L"e-" : L"e+") + std::to_wstring(std::abs(exponent));
    }
    if (point <= 0) return L"0." + std::wstring(static_cast<std::size_t>(-point), L'0') + digits;
    if (point >= count) return digits.append(static_cast<std::size_t>(point - count), L'0');
    return digits.insert(static_cast<std::size_t>(point), L".");
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
        case VT_R4:
            if (isJScript) return JScriptNumber(static_cast<double>(value.fltVal));
            break;
        case VT_R8:
            if (isJScript) return JScriptNumber(value.dblVal);
            break;
        case VT_ERROR:
            return value.scode == DISP_E_PARAMNOTFOUND ? L"" : L"Error " + std::to_wstring(value.scode);
        default:
            break;
    }
    // JScript has no dates of this type itself: a component returned it.
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
