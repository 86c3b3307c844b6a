#pragma once

#include "platform/conversions.h"
#include "platform/values.h"

namespace kwo::frame {

/// What stands between a number's whole part and its fraction in the user's locale.
platform::Text DecimalPoint(platform::Conversions& conversions);

/// Puts `value` behind `text` with at least `wholeDigits` before the point and `places` (1 to 4) behind it, halves away
/// from zero: the text that the conversions give for patterns such as "#0.000" and "000.00", at a fraction of the cost.
void AppendFixedDigits(platform::Text& text, platform::Currency value, int wholeDigits, int places,
                       platform::TextView point);

}  // namespace kwo::frame
