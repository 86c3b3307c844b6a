#pragma once

#include <cstdint>

#include "controls/month_dates.h"
#include "controls/month_layout.h"
#include "messages/locale.h"

namespace kwo::controls {

/// The user's first day of the week: 0 is Monday, also for a setting that names no day. Read anew for each use; the
/// locale reads the system's settings once.
inline std::int32_t FirstDayOfWeek(messages::MKWOLocale& locale) {
    locale.KWOLocaleInit();
    const std::int32_t first = locale.Record().LocaleFirstDayOfWeek;
    return first >= 0 && first < static_cast<std::int32_t>(MonthLayout::kColumns) ? first : 0;
}

/// Which cells of the calendar have days.
class MonthGrid {
public:
    /// Of the date's month; `firstDayOfWeek` 0 is Monday.
    MonthGrid(Date date, std::int32_t firstDayOfWeek)
        : mFirstColumn((WeekdayOf(FirstOfMonth(date)) - firstDayOfWeek + 7) % 7),
          mLastDay(DayOf(LastOfMonth(date)).day) {}

    /// 0 for an empty cell.
    std::int16_t DayAt(std::size_t column, std::size_t row) const {
        const auto place = static_cast<std::int32_t>(row * MonthLayout::kColumns + column);
        const std::int32_t day = place - mFirstColumn + 1;
        return static_cast<std::int16_t>(day >= 1 && day <= mLastDay ? day : 0);
    }

private:
    std::int32_t mFirstColumn;
    std::int32_t mLastDay;
};

}  // namespace kwo::controls
