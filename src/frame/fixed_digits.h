#pragma once

#include "platform/conversions.h"
#include "platform/values.h"

namespace kwo::frame {

/// The decimal separator of the user's locale, between a number's whole part and its fraction.
/// It may have several characters. Formats a number to find out: keep the result.
platform::Text DecimalPoint(platform::Conversions& conversions);

/// Appends `value` to `text`, with at least `wholeDigits` digits before the point and exactly `places` (1 to 4) after
/// it, rounded half away from zero.
/// A negative value has a minus sign, unless it rounds to zero. There is no grouping. `point` is what DecimalPoint
/// returned.
/// The result is that of the patterns "#0.000" or "000.00" of Conversions::FormatNumber, at a fraction of the cost.
void AppendFixedDigits(platform::Text& text, platform::Currency value, int wholeDigits, int places,
                       platform::TextView point);

}  // namespace kwo::frame
