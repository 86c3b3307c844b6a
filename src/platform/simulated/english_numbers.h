#pragma once

#include <optional>

#include "platform/text.h"

namespace kwo::platform::simulated {

/// A number read from a text in the United States' English locale.
struct ParsedNumber {
    double value = 0;
    /// A number that not even a double holds.
    bool tooLarge = false;
    /// Written with &H or &O: a pattern of bits of at most 64.
    bool isPattern = false;
};

/// Whether it is one of the ten digits of English.
constexpr bool IsDigit(char16_t c) {
    return c >= u'0' && c <= u'9';
}

/// Blanks around, a sign before or behind, brackets for a negative number, a dollar sign, commas between the digits
/// of the whole part, a fraction, an exponent with E or D, &H and &O.
/// Nothing when the text is no number.
std::optional<ParsedNumber> ParseNumber(TextView text);

/// The shortest form with at most `digits` significant digits; with an exponent if that is below -4 or not below
/// `digits`.
Text NumberText(double value, int digits);

/// By a pattern of `0`, `#`, `,`, `.` and literals before and behind.
/// Rounds halves away from zero, in the decimal digits that the number shows.
Text FormattedNumber(double value, TextView pattern);

}  // namespace kwo::platform::simulated
