#pragma once

#include <cstdint>
#include <optional>

#include "platform/values.h"

namespace kwo::platform::simulated {

/// An automation date taken apart, to the nearest second.
struct Moment {
    std::int32_t year = 0;
    unsigned month = 0;
    unsigned day = 0;
    unsigned weekday = 0;  ///< 0 is Sunday
    unsigned hour = 0;
    unsigned minute = 0;
    unsigned second = 0;
};

constexpr double kFirstDay = -657434;  ///< 100-01-01
constexpr double kLastDay = 2958465;   ///< 9999-12-31

/// Whether an automation date can be that many days.
bool IsWithinCalendar(double days);

Moment MomentOf(Date date);

/// Nothing when there is no such day.
std::optional<double> DayNumber(std::int32_t year, unsigned month, unsigned day);

/// A day and a time of day (a fraction from 0 to below 1). Before day 0 the time counts away from it.
Date Joined(double day, double timeOfDay);

}  // namespace kwo::platform::simulated
