#pragma once

#include "platform/conversions.h"

namespace kwo::frame {

/// "h:nn:ss", with a whole day or more "d:hh:nn:ss"; the sign is dropped. Rounded to whole seconds.
platform::Text KWO_FormatDuration(platform::Conversions& conversions, platform::Date duration);

}  // namespace kwo::frame
