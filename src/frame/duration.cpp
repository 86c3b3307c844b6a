#include "frame/duration.h"

#include <cmath>

namespace kwo::frame {

platform::Text KWO_FormatDuration(platform::Conversions& conversions, platform::Date duration) {
    constexpr double kSecondsPerDay = 86'400;
    // Rounded before it is split, so that the last half second of a day counts as the next day.
    const double seconds = std::nearbyint(std::fabs(duration.days) * kSecondsPerDay);
    const double days = std::floor(seconds / kSecondsPerDay);
    const platform::Date timeOfDay{(seconds - days * kSecondsPerDay) / kSecondsPerDay};
    if (days < 1) return conversions.FormatDate(timeOfDay, u"h:nn:ss");
    return conversions.FormatNumber(days, u"0") + conversions.FormatDate(timeOfDay, u":hh:nn:ss");
}

}  // namespace kwo::frame
