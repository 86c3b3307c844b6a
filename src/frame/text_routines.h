#pragma once

#include <cstdint>
#include <span>

#include "platform/text.h"

namespace kwo::frame {

using platform::Text;
using platform::TextView;

inline constexpr TextView kCrLf = u"\r\n";

/// Without leading and trailing blanks.
Text Trim(TextView text);
/// Without trailing blanks.
Text TrimRight(TextView text);
/// The plain letters A to Z only, whatever the user's language.
Text AsciiUpper(TextView text);
Text AsciiLower(TextView text);
Text Decimal(std::int64_t number);
/// Every occurrence, left to right; what is put in is not searched again. An empty `from` changes nothing.
Text ReplaceAll(TextView text, TextView from, TextView to);

/// The name behind the last backslash (or, when there is none, the last "/"); empty for a drive root.
Text KWO_FileNamePart(TextView path);
/// `path` with `separator` behind it, unless it ends with one or with either slash.
Text KWO_AddSeparator(TextView path, TextView separator);
/// The text before the first zero character.
Text KWO_CutAtNul(TextView text);
/// The first `marker` in `text` replaced by `value`, in single quotes on request. Where there is no marker the value
/// goes behind the text after a blank. Empty when `text` or `marker` is empty.
Text KWO_InsertValue(TextView text, TextView value, TextView marker, bool quote);
/// Fills "%1", "%2" ... by number when the template has a "%1", else each "|" in turn. A value without a marker goes
/// behind the text after a blank.
Text KWO_FillTemplate(TextView text, std::span<const Text> values);
constexpr std::int32_t KWO_LowWord(std::int32_t value) {
    return value & 0xFFFF;
}

}  // namespace kwo::frame
