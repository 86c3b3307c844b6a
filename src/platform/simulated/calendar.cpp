#include "platform/simulated/calendar.h"

#include <chrono>
#include <cmath>

namespace kwo::platform::simulated {
namespace {

using std::chrono::days;
using std::chrono::sys_days;
using std::chrono::year_month_day;

constexpr sys_days kDayZero = sys_days(year_month_day(std::chrono::year(1899) / 12 / 30));
constexpr std::int64_t kSecondsPerDay = 86'400;

}  // namespace

bool IsWithinCalendar(double days) {
    return days > kFirstDay - 1 && days < kLastDay + 1;
}

Moment MomentOf(Date date) {
    const double wholeDays = std::trunc(date.days);
    auto day = static_cast<std::int64_t>(wholeDays);
    const double time = std::fabs(date.days - wholeDays);
    auto seconds = static_cast<std::int64_t>(std::floor(time * static_cast<double>(kSecondsPerDay) + 0.5));
    if (seconds == kSecondsPerDay) {
        seconds = 0;
        ++day;
    }
    const sys_days on = kDayZero + days(day);
    const year_month_day calendar(on);
    return {static_cast<int>(calendar.year()),     static_cast<unsigned>(calendar.month()),
            static_cast<unsigned>(calendar.day()), std::chrono::weekday(on).c_encoding(),
            static_cast<unsigned>(seconds / 3600), static_cast<unsigned>(seconds / 60 % 60),
            static_cast<unsigned>(seconds % 60)};
}

std::optional<double> DayNumber(std::int32_t year, unsigned month, unsigned day) {
    const year_month_day date{std::chrono::year(year), std::chrono::month(month), std::chrono::day(day)};
    if (!date.ok() || year < 100 || year > 9999) return std::nullopt;
    return static_cast<double>((sys_days(date) - kDayZero).count());
}

Date Joined(double day, double timeOfDay) {
    return {day < 0 ? day - timeOfDay : day + timeOfDay};
}

}  // namespace kwo::platform::simulated
