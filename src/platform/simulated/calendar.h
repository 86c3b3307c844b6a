#pragma once

#include <cstdint>
#include <optional>

#include "platform/values.h"

namespace kwo::platform::simulated {

/// An automation date split into its parts, to the nearest second. Month and day count from 1.
struct Moment {
    std::int32_t year = 0;
    unsigned month = 0;
    unsigned day = 0;
    /// 0 is Sunday.
    unsigned weekday = 0;
    unsigned hour = 0;
    unsigned minute = 0;
    unsigned second = 0;
};

constexpr double kFirstDay = -657434;  ///< 100-01-01
constexpr double kLastDay = 2958465;   ///< 9999-12-31

/// Whether this many days are a date of the calendar, from the first second of 100-01-01 to the last one of
/// 9999-12-31.
/// False for a value that is not a number.
bool IsWithinCalendar(double days);

/// The parts of a date within the calendar.
Moment MomentOf(Date date);

/// The number of a day, as automation counts it; nothing if there is no such day.
std::optional<double> DayNumber(std::int32_t year, unsigned month, unsigned day);

/// The date of a day and a time of day (a fraction from 0 to below 1). Before day 0 the time counts away from 0.
Date Joined(double day, double timeOfDay);

}  // namespace kwo::platform::simulated
