#include "platform/windows/windows_conversions.h"

#include <windows.h>
#include <oleauto.h>

#include <cmath>

#include "com_support/bstr.h"
#include "com_support/owned_variant.h"
#include "com_support/variant_conversion.h"
#include "platform/component_error.h"
#include "platform/windows/ansi.h"
#include "platform/windows/variant_bridge.h"

namespace kwo::platform::windows {

namespace {

using com_support::OwnedVariant;

/// False for a value that is not a number, too.
bool IsWithinCalendar(double days) {
    constexpr double kBeforeFirstDay = -657435;  // 0099-12-31
    constexpr double kBehindLastDay = 2958466;   // 10000-01-01
    return days > kBeforeFirstDay && days < kBehindLastDay;
}

/// The value that the system converts to `type` next. Raises an error for values that the system would convert in its
/// own way.
OwnedVariant Convertible(const Variant& value, VARTYPE type) {
    OwnedVariant source = OwnedVariant::Adopt(ToVariant(value));
    // The system would convert an array of bytes to text, and read a number up to a zero character.
    if (source.vt & VT_ARRAY) RaiseRuntime(RuntimeError::TypeMismatch);
    if (const auto* const text = std::get_if<Text>(&value); text != nullptr && text->find(u'\0') != Text::npos) {
        RaiseRuntime(RuntimeError::TypeMismatch);
    }
    // Some systems ignore the sign when they convert an unsigned number to a signed one of the same size.
    if (type == VT_I4 && (source.vt == VT_UI4 || source.vt == VT_UINT) && source.lVal < 0) {
        RaiseRuntime(RuntimeError::Overflow);
    }
    return source;
}

OwnedVariant Changed(const Variant& value, VARTYPE type) {
    const OwnedVariant source = Convertible(value, type);
    OwnedVariant changed;
    RaiseIfNotConverted(com_support::Convert(changed, source, type, LOCALE_USER_DEFAULT));
    return changed;
}

Text Formatted(VARIANT value, TextView pattern) {
    std::wstring format = ToWide(pattern);
    com_support::Bstr text;
    RaiseIfNotConverted(::VarFormat(&value, format.data(), 0, 0, 0, text.Out()));
    return com_support::ToText(text.Get());
}

}  // namespace

std::int16_t WindowsConversions::ToInt16(const Variant& value) {
    return Changed(value, VT_I2).iVal;
}

std::int32_t WindowsConversions::ToInt32(const Variant& value) {
    return static_cast<std::int32_t>(Changed(value, VT_I4).lVal);
}

std::int32_t WindowsConversions::To32Bits(const Variant& value) {
    LONG bits = 0;
    RaiseIfNotConverted(com_support::To32Bits(bits, Convertible(value, VT_I8), LOCALE_USER_DEFAULT));
    return bits;
}

float WindowsConversions::ToSingle(const Variant& value) {
    return Changed(value, VT_R4).fltVal;
}

double WindowsConversions::ToDouble(const Variant& value) {
    return Changed(value, VT_R8).dblVal;
}

bool WindowsConversions::ToBoolean(const Variant& value) {
    return Changed(value, VT_BOOL).boolVal != VARIANT_FALSE;
}

Date WindowsConversions::ToDate(const Variant& value) {
    const Date date{Changed(value, VT_DATE).date};
    // The system does not check a value that is a date already.
    if (!IsWithinCalendar(date.days)) RaiseRuntime(RuntimeError::Overflow);
    return date;
}

Text WindowsConversions::ToText(const Variant& value) {
    if (const auto* const text = std::get_if<Text>(&value)) return *text;
    return com_support::ToText(Changed(value, VT_BSTR).bstrVal);
}

std::optional<Date> WindowsConversions::ParseDate(TextView text) {
    if (text.find(u'\0') != TextView::npos) return std::nullopt;
    Date date;
    std::wstring wide = ToWide(text);
    if (FAILED(::VarDateFromStr(wide.data(), LOCALE_USER_DEFAULT, 0, &date.days))) return std::nullopt;
    return date;
}

Text WindowsConversions::FormatNumber(double value, TextView pattern) {
    // For a pattern without decimals some systems do not round values between -1 and 1: a half stays "0", and a tiny
    // negative value becomes "-0".
    if (std::fabs(value) < 1 && pattern.find(u'.') == TextView::npos) value = std::round(value) + 0.0;
    VARIANT number;
    ::VariantInit(&number);
    number.vt = VT_R8;
    number.dblVal = value;
    return Formatted(number, pattern);
}

Text WindowsConversions::FormatDate(Date value, TextView pattern) {
    if (!IsWithinCalendar(value.days)) RaiseRuntime(RuntimeError::Overflow);
    VARIANT date;
    ::VariantInit(&date);
    date.vt = VT_DATE;
    date.date = value.days;
    return Formatted(date, pattern);
}

char16_t WindowsConversions::ToUpper(char16_t character) {
    wchar_t letter = character;
    ::CharUpperBuffW(&letter, 1);
    return letter;
}

Text WindowsConversions::FromAnsi(std::string_view bytes) {
    return windows::FromAnsi(bytes);
}

std::string WindowsConversions::ToAnsi(TextView text) {
    return windows::ToAnsi(text);
}

}  // namespace kwo::platform::windows
