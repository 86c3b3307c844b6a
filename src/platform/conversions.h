#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "platform/text.h"
#include "platform/values.h"
#include "platform/variant.h"

namespace kwo::platform {

/// The automation rules of conversion, in the user's locale. A number that does not fit raises Overflow, a value of
/// the wrong kind TypeMismatch. Rounding to whole numbers is to the nearest, halves to even.
class Conversions {
public:
    virtual ~Conversions() = default;

    virtual std::int16_t ToInt16(const Variant& value) = 0;
    virtual std::int32_t ToInt32(const Variant& value) = 0;
    /// The bits of a handle or a colour: of any whole number that 32 bits hold, with or without a sign.
    virtual std::int32_t To32Bits(const Variant& value) = 0;
    virtual float ToSingle(const Variant& value) = 0;
    virtual double ToDouble(const Variant& value) = 0;
    virtual bool ToBoolean(const Variant& value) = 0;
    virtual Date ToDate(const Variant& value) = 0;
    virtual Text ToText(const Variant& value) = 0;

    /// Nothing when the text is no date in the user's locale.
    virtual std::optional<Date> ParseDate(TextView text) = 0;
    /// A number by a format pattern such as "#,##0" or "#0.000".
    virtual Text FormatNumber(double value, TextView pattern) = 0;
    /// A date by a format pattern such as "h:nn:ss", "Mmmm, yyyy" or "Short Date".
    virtual Text FormatDate(Date value, TextView pattern) = 0;

    /// The capital letter of a letter, any other character as it is.
    virtual char16_t ToUpper(char16_t character) = 0;

    /// Text from bytes in the system's ANSI code page, one after the other, zero bytes included.
    virtual Text FromAnsi(std::string_view bytes) = 0;
    virtual std::string ToAnsi(TextView text) = 0;
};

}  // namespace kwo::platform
