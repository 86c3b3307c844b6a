#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "platform/text.h"
#include "platform/values.h"
#include "platform/variant.h"

namespace kwo::platform {

/// Converts values by the rules of automation, in the user's locale.
///
/// A number out of range raises Overflow, a value of the wrong kind TypeMismatch. Rounding is to the nearest whole
/// number, halves to even.
class Conversions {
public:
    virtual ~Conversions() = default;

    /// A whole number from -32768 to 32767.
    virtual std::int16_t ToInt16(const Variant& value) = 0;
    /// A whole number of 32 bits, signed.
    virtual std::int32_t ToInt32(const Variant& value) = 0;
    /// The bits of a handle or colour: any whole number that fits 32 bits, signed or unsigned.
    virtual std::int32_t To32Bits(const Variant& value) = 0;
    /// A number of single precision.
    virtual float ToSingle(const Variant& value) = 0;
    /// A number of double precision.
    virtual double ToDouble(const Variant& value) = 0;
    /// False for 0 and true for any other number; the texts "True" and "False" count too.
    virtual bool ToBoolean(const Variant& value) = 0;
    /// A date; text is read in the user's locale. Raises Overflow outside the calendar, that is, before the year 100 or
    /// after 9999.
    virtual Date ToDate(const Variant& value) = 0;
    /// The text as automation clients show it. Booleans are "True" and "False".
    virtual Text ToText(const Variant& value) = 0;

    /// The date that `text` stands for in the user's locale; nothing if it stands for none.
    virtual std::optional<Date> ParseDate(TextView text) = 0;
    /// A number by a pattern such as "#,##0" or "#0.000", with the separators of the user's locale.
    virtual Text FormatNumber(double value, TextView pattern) = 0;
    /// A date by a pattern such as "h:nn:ss", "Mmmm, yyyy" or "Short Date", with the names and separators of the user's
    /// locale. Raises Overflow outside the calendar.
    virtual Text FormatDate(Date value, TextView pattern) = 0;

    /// The capital letter for a letter of any language; another character stays as it is.
    virtual char16_t ToUpper(char16_t character) = 0;

    /// Text from bytes in the system's ANSI code page. Zero bytes become zero characters.
    virtual Text FromAnsi(std::string_view bytes) = 0;
    /// Bytes in the system's ANSI code page. A character outside of it becomes a similar one or a question mark.
    virtual std::string ToAnsi(TextView text) = 0;
};

}  // namespace kwo::platform
