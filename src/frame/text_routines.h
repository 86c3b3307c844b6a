#pragma once

#include <cstdint>
#include <span>

#include "platform/text.h"

namespace kwo::frame {

using platform::Text;
using platform::TextView;

/// The line end of messages and logs.
inline constexpr TextView kCrLf = u"\r\n";

/// `text` without leading and trailing blanks. Tabs and line ends are not blanks.
Text Trim(TextView text);
/// `text` without trailing blanks.
Text TrimRight(TextView text);
/// `text` with a to z as capitals. Other letters stay as they are, whatever the user's language.
Text AsciiUpper(TextView text);
/// `text` with A to Z as small letters. Other letters stay as they are.
Text AsciiLower(TextView text);
/// The number in decimal digits, with a minus sign if it is negative and no grouping.
Text Decimal(std::int64_t number);
/// `text` with every `from` replaced by `to`, from left to right.
/// Inserted text is not searched again. An empty `from` changes nothing.
Text ReplaceAll(TextView text, TextView from, TextView to);

/// The name after the last backslash or, without one, after the last "/"; the whole path if it has neither.
/// Blanks around the path and one backslash at its end are ignored.
/// Empty for a drive root such as "C:\" and for an empty path.
Text KWO_FileNamePart(TextView path);
/// `path` followed by `separator`, unless it already ends with that or with a slash or backslash.
/// An empty path becomes the separator alone.
Text KWO_AddSeparator(TextView path, TextView separator);
/// The text before the first zero character, or all of it.
Text KWO_CutAtNul(TextView text);
/// `text` with its first `marker` replaced by `value`.
/// If it has no marker, a blank and the value follow the text: see docs/intended.md.
/// `quote` puts single quotes around the value.
/// Empty if `text` or `marker` is empty.
Text KWO_InsertValue(TextView text, TextView value, TextView marker, bool quote);
/// Fills a template with values:
///
///     KWO_FillTemplate(u"%2 of %1", values)    // "b of a"
///     KWO_FillTemplate(u"copied | to |", values)    // "copied a to b"
///
/// If it has a "%1", value n replaces the first "%n"; otherwise each value replaces the next "|". A value without a
/// marker follows the text after a blank. Inserted text is searched again: a value that contains a marker may receive
/// a later value.
Text KWO_FillTemplate(TextView text, std::span<const Text> values);
/// The low 16 bits, as a number from 0 to 65535.
constexpr std::int32_t KWO_LowWord(std::int32_t value) {
    return value & 0xFFFF;
}

}  // namespace kwo::frame
