#pragma once

#include <optional>

#include "platform/text.h"
#include "platform/values.h"

namespace kwo::platform::simulated {

/// What the system reads as a date in the United States' English locale:
/// `m/d/yyyy`, `m-d-yyyy`, `yyyy-mm-dd` (also with `/`), `h:nn`, `h:nn:ss`, `h AM`, each time with AM or PM or
/// without, and a date and a time together. Two digits of a year are 1930 to 2029.
/// Nothing for any other text.
std::optional<Date> ParseEnglishDate(TextView text);

/// What the system shows for a date in that locale: `m/d/yyyy`, `h:nn:ss AM/PM` or both with a blank between: the
/// parts that are not zero, and the time for 0.
/// The date must be within the calendar.
Text DateText(Date date);

/// By a pattern of `d` to `dddd`, `m` to `mmmm` (minutes right behind hours), `yy`, `yyyy`, `h`, `hh`, `n`, `nn`, `s`,
/// `ss`, `AM/PM` in either case, and literals; or "Short Date" or "Long Date".
/// A letter that is none of these throws std::invalid_argument.
Text FormattedDate(Date date, TextView pattern);

}  // namespace kwo::platform::simulated
