#pragma once

#include <cstdint>
#include <optional>

#include "platform/text.h"

namespace kwo::platform {

/// The user's locale settings and time zone. Each call asks the system again, so a change shows at once.
class LocaleSource {
public:
    /// When daylight-saving time begins or ends, as the system's time-zone record says it, in local time.
    /// With `year` 0 it is the `day`th `dayOfWeek` of the month in every year; a `day` of 5 means the last one of the
    /// month. With another `year` it is that one date. A `month` of 0 means that the zone has no change.
    struct ChangeDate {
        std::uint16_t year = 0;
        std::uint16_t month = 0;
        std::uint16_t dayOfWeek = 0;  ///< 0 is Sunday
        std::uint16_t day = 0;
        std::uint16_t hour = 0;
        std::uint16_t minute = 0;
        friend bool operator==(const ChangeDate&, const ChangeDate&) = default;
    };
    /// A time zone.
    /// Biases are minutes: local time plus `bias` plus the bias of the season is UTC. The names are in the user's
    /// language.
    struct TimeZone {
        std::int32_t bias = 0;
        Text standardName;
        ChangeDate standardDate;
        std::int32_t standardBias = 0;
        Text daylightName;
        ChangeDate daylightDate;
        std::int32_t daylightBias = 0;
    };

    virtual ~LocaleSource() = default;

    /// A setting of the user's locale (GetLocaleInfoA).
    /// `type` is the system's LCTYPE.
    /// Returns nothing if the text and its terminating zero do not fit `capacity` bytes, if `capacity` is 0, or if the
    /// call fails; the last-error value says why.
    virtual std::optional<Text> Setting(std::uint32_t type, std::uint32_t capacity) = 0;
    /// Fills `zone` (GetTimeZoneInformation).
    /// Returns 1 in standard time, 2 in daylight-saving time, 0 if the zone has none.
    /// 0xFFFFFFFF means failure; `zone` then stays.
    virtual std::uint32_t QueryTimeZone(TimeZone& zone) = 0;
};

}  // namespace kwo::platform
