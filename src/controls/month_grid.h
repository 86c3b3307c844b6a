#pragma once

#include <cstdint>

#include "controls/month_dates.h"
#include "controls/month_layout.h"
#include "messages/locale.h"

namespace kwo::controls {

/// The first day of the week in the user's locale: 0 is Monday, which also stands for an invalid setting.
/// Reads the locale settings if nobody has yet.
inline std::int32_t FirstDayOfWeek(messages::MKWOLocale& locale) {
    locale.KWOLocaleInit();
    const std::int32_t first = locale.Record().firstDayOfWeek;
    return first >= 0 && first < static_cast<std::int32_t>(MonthLayout::kColumns) ? first : 0;
}

/// Which day is in which cell of the calendar. A value that is made for one month; drawing and clicks use the same.
class MonthGrid {
public:
    /// For the month of `date`.
    /// `firstDayOfWeek` (0 to 6) is that of the first column; 0 is Monday.
    /// Raises InvalidProcedureCall outside the calendar.
    MonthGrid(Date date, std::int32_t firstDayOfWeek)
        : mFirstColumn((WeekdayOf(FirstOfMonth(date)) - firstDayOfWeek + 7) % 7),
          mLastDay(DayOf(LastOfMonth(date)).day) {}

    /// The day of the month in a cell, 1 to 31; 0 if the cell is empty. Columns and rows count from 0.
    std::int16_t DayAt(std::size_t column, std::size_t row) const {
        const auto place = static_cast<std::int32_t>(row * MonthLayout::kColumns + column);
        const std::int32_t day = place - mFirstColumn + 1;
        return static_cast<std::int16_t>(day >= 1 && day <= mLastDay ? day : 0);
    }

private:
    /// Where the first day of the month is, 0 to 6.
    std::int32_t mFirstColumn;
    /// 28 to 31.
    std::int32_t mLastDay;
};

}  // namespace kwo::controls
