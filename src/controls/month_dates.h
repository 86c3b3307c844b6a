#pragma once

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <map>

#include "platform/component_error.h"
#include "platform/values.h"
#include "platform/whole_numbers.h"

namespace kwo::controls {

using platform::Date;

/// The date without its time of day, which is what stands before the decimal point. Works for every number.
inline Date WholeDays(Date date) {
    return {std::trunc(date.days)};
}

/// A day of the calendar: year 100 to 9999, month 1 to 12, day 1 to 31. All are 0 where there is no day.
struct CalendarDay {
    std::int16_t year = 0;
    std::int16_t month = 0;
    std::int16_t day = 0;
};

/// Automation dates count from 1899-12-30; the calendar has the years 100 to 9999.
inline constexpr std::chrono::sys_days kDayZero{std::chrono::year{1899} / 12 / 30};
/// 100-01-01.
inline constexpr double kFirstDate = -657434;
/// 9999-12-31.
inline constexpr double kLastDate = 2958465;

/// Returns `date`, with its time of day. Raises InvalidProcedureCall if it is outside the calendar or not a number.
inline Date InCalendar(Date date) {
    if (!(date.days > kFirstDate - 1 && date.days < kLastDate + 1)) {
        platform::RaiseRuntime(platform::RuntimeError::InvalidProcedureCall);
    }
    return date;
}

/// Year, month and day of a date; its time of day does not count. Raises InvalidProcedureCall outside the calendar.
inline CalendarDay DayOf(Date date) {
    const auto days = static_cast<std::int32_t>(InCalendar(WholeDays(date)).days);
    const std::chrono::year_month_day calendar{kDayZero + std::chrono::days{days}};
    return {static_cast<std::int16_t>(static_cast<int>(calendar.year())),
            static_cast<std::int16_t>(static_cast<unsigned>(calendar.month())),
            static_cast<std::int16_t>(static_cast<unsigned>(calendar.day()))};
}

/// The date of a day.
/// Days and months beyond their ends continue into the next or the previous month or year: day 0 is the last day of
/// the month before.
/// The result may be outside the calendar.
/// Raises InvalidProcedureCall for a year beyond 30,000.
inline Date DateOf(std::int32_t year, std::int32_t month, std::int32_t day) {
    const std::int32_t months = year * 12 + month - 1;
    const std::int32_t wholeYears = months >= 0 ? months / 12 : (months - 11) / 12;
    constexpr std::int32_t kFarthestYear = 30'000;
    if (wholeYears > kFarthestYear || wholeYears < -kFarthestYear) {
        platform::RaiseRuntime(platform::RuntimeError::InvalidProcedureCall);
    }
    const auto first =
        std::chrono::sys_days{std::chrono::year{wholeYears} / static_cast<int>(months - wholeYears * 12 + 1) / 1};
    return {static_cast<double>((first - kDayZero).count() + day - 1)};
}

/// The first day of the date's month, without a time of day. Raises InvalidProcedureCall outside the calendar.
inline Date FirstOfMonth(Date date) {
    const CalendarDay day = DayOf(date);
    return DateOf(day.year, day.month, 1);
}

/// The last day of the date's month, without a time of day. Raises InvalidProcedureCall outside the calendar.
inline Date LastOfMonth(Date date) {
    const CalendarDay day = DayOf(date);
    return DateOf(day.year, day.month + 1, 0);
}

/// The same day `months` later (or earlier, if negative), or the last day of a shorter month.
/// The time of day is lost.
/// Raises InvalidProcedureCall if either date is outside the calendar.
inline Date MovedByMonths(Date date, std::int32_t months) {
    const CalendarDay day = DayOf(date);
    const Date first = InCalendar(DateOf(day.year, day.month + months, 1));
    const Date same = DateOf(day.year, day.month + months, day.day);
    const Date last = LastOfMonth(first);
    return same < last ? same : last;
}

/// The day of the week; 0 is Monday, 6 is Sunday. The date must be one of the calendar.
inline std::int32_t WeekdayOf(Date date) {
    const auto days = static_cast<std::int32_t>(WholeDays(date).days);
    return static_cast<std::int32_t>(std::chrono::weekday{kDayZero + std::chrono::days{days}}.iso_encoding()) - 1;
}

/// The selected days, in the order in which they were selected.
/// Dates that round to the same day are one; the date is kept as it was given first.
/// Members that take a date raise Overflow if it does not fit 32 bits or is not a number; nothing has changed then.
class SelectedDays {
public:
    /// Whether the day is selected.
    bool Has(Date date) const { return mDays.contains(KeyOf(date)); }
    /// Adds a day; false if it is already there. Without memory nothing has changed.
    bool Add(Date date) {
        const bool isNew = mDays.emplace(KeyOf(date), Selected{mNext, date}).second;
        if (isNew) ++mNext;
        return isNew;
    }
    /// Removes a day; false if it is not there.
    bool Remove(Date date) { return mDays.erase(KeyOf(date)) != 0; }
    /// Removes all days.
    void Clear() { mDays.clear(); }
    /// How many there are.
    std::size_t Count() const { return mDays.size(); }
    /// The day that was added first, as it was given; the date 0 if there is none.
    Date First() const {
        const auto wasEarlier = [](const auto& one, const auto& other) {
            return one.second.place < other.second.place;
        };
        const auto first = std::ranges::min_element(mDays, wasEarlier);
        return first == mDays.end() ? Date{} : first->second.date;
    }

private:
    struct Selected {
        /// In the order of selection. Places are never used again.
        std::uint64_t place;
        /// As it was given.
        Date date;
    };

    /// The day that a date rounds to; halves go to the even one.
    static std::int32_t KeyOf(Date date) { return platform::Rounded<std::int32_t>(date.days); }

    std::map<std::int32_t, Selected> mDays;
    /// The next place.
    std::uint64_t mNext = 0;
};

}  // namespace kwo::controls
