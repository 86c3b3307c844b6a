#pragma once

#include <cstdint>
#include <optional>

#include "platform/text.h"

namespace kwo::platform {

/// The user's locale settings and time zone.
class LocaleSource {
public:
    /// A day of the year in the way of the platform's time-zone record: the `day`th `dayOfWeek` of the month, or a date
    /// where `year` is not 0.
    struct ChangeDate {
        std::uint16_t year = 0;
        std::uint16_t month = 0;
        std::uint16_t dayOfWeek = 0;
        std::uint16_t day = 0;
        std::uint16_t hour = 0;
        std::uint16_t minute = 0;
        friend bool operator==(const ChangeDate&, const ChangeDate&) = default;
    };
    /// Biases are minutes to add to local time for UTC.
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

    /// GetLocaleInfoA of the user's default locale with a buffer of `capacity` characters, the terminating zero
    /// included. Nothing when the platform fails and when the buffer is too small.
    virtual std::optional<Text> Setting(std::uint32_t type, std::uint32_t capacity) = 0;
    /// GetTimeZoneInformation: fills the record; the result tells which part of the year it is.
    virtual std::uint32_t QueryTimeZone(TimeZone& zone) = 0;
};

}  // namespace kwo::platform
