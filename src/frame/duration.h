#pragma once

#include "platform/conversions.h"

namespace kwo::frame {

/// The text of a span in days: "h:nn:ss" or, from a whole day on, "d:hh:nn:ss".
/// The sign is dropped.
/// The span is rounded to whole seconds first, halves to even, so the text never shows 60 seconds.
/// The time separator is the one of the user's locale.
/// Raises what Conversions raises.
platform::Text KWO_FormatDuration(platform::Conversions& conversions, platform::Date duration);

}  // namespace kwo::frame
