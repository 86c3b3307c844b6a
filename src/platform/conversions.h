#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "platform/text.h"
#include "platform/values.h"
#include "platform/variant.h"

namespace kwo::platform {

/// Converts values by the rules of automation, in the locale of the current user.
///
/// A number out of range raises Overflow, a value of the wrong kind TypeMismatch. Missing, Null, an error value and
/// the null object are of the wrong kind for every type.
/// Empty counts as 0, False, or the empty text.
/// True counts as -1.
/// A text counts as the number that it shows, with the separators of the locale, or as &H and hexadecimal digits. The
/// empty text and a text with a zero character are of the wrong kind.
/// Rounding is to the nearest whole number, halves to even. A value that is not a number (NaN) raises Overflow where a
/// whole number or a date is wanted.
/// An object of the host is asked for its default value, which may run any code of the host. An object without one is
/// of the wrong kind.
class Conversions {
public:
    virtual ~Conversions() = default;

    /// A whole number from -32768 to 32767.
    virtual std::int16_t ToInt16(const Variant& value) = 0;
    /// A whole number from -2147483648 to 2147483647.
    virtual std::int32_t ToInt32(const Variant& value) = 0;
    /// The bits of a handle or colour: any whole number from -2147483648 to 4294967295.
    /// 4294967295 and -1 give the same bits.
    virtual std::int32_t To32Bits(const Variant& value) = 0;
    /// A number of single precision.
    /// Raises Overflow beyond some 3.4E38; digits that single precision lacks are rounded away.
    virtual float ToSingle(const Variant& value) = 0;
    /// A number of double precision. A date becomes its days.
    virtual double ToDouble(const Variant& value) = 0;
    /// False for 0 and true for any other number.
    /// The texts "True" and "False" count too, in upper and lower case, as do texts of numbers.
    virtual bool ToBoolean(const Variant& value) = 0;
    /// A date.
    /// A text is read in the user's locale, a number counts as days since 1899-12-30.
    /// Raises Overflow outside the calendar, that is, before the year 100 or after 9999, and TypeMismatch for a text
    /// that is not a date.
    virtual Date ToDate(const Variant& value) = 0;
    /// The text as automation clients show it, in the user's locale.
    /// Booleans are "True" and "False", in English.
    /// A text is returned as it is, zero characters included.
    /// Raises TypeMismatch for a date outside the calendar.
    virtual Text ToText(const Variant& value) = 0;

    /// The date that `text` stands for in the user's locale: a date, a time of day, or both.
    /// A time alone is a time on day 0.
    /// Nothing if it stands for none or contains a zero character.
    virtual std::optional<Date> ParseDate(TextView text) = 0;
    /// A number by a pattern such as "#,##0" or "#0.000", with the separators of the user's locale.
    /// "0" always shows a digit, "#" only a significant one.
    /// Rounds halves away from zero, in the decimal digits that the pattern shows.
    virtual Text FormatNumber(double value, TextView pattern) = 0;
    /// A date by a pattern such as "h:nn:ss", "Mmmm, yyyy", "Short Date" or "Long Date", with the names and
    /// separators of the user's locale.
    /// "n" is the minute, "m" the month.
    /// Raises Overflow outside the calendar.
    virtual Text FormatDate(Date value, TextView pattern) = 0;

    /// The capital letter for a letter of any language; another character stays as it is.
    virtual char16_t ToUpper(char16_t character) = 0;

    /// Text from bytes in the system's ANSI code page.
    /// Zero bytes become zero characters. Bytes that the code page lacks become other characters.
    virtual Text FromAnsi(std::string_view bytes) = 0;
    /// Bytes in the system's ANSI code page, without a terminating zero.
    /// A character may take several bytes.
    /// A character outside of the code page becomes a similar one or a question mark.
    virtual std::string ToAnsi(TextView text) = 0;
};

}  // namespace kwo::platform
