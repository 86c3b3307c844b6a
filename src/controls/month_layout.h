#pragma once

#include <array>
#include <cstdint>
#include <optional>

#include "controls/month_dates.h"
#include "messages/locale.h"
#include "platform/geometry.h"
#include "platform/twips.h"

namespace kwo::controls {

using platform::Rect;
using platform::TwipsPerPixel;

/// The places of everything in a calendar, in pixels of its picture box.
///
/// Drawing and hit testing read the same layout, so the user hits what is drawn. A fresh one has only empty
/// rectangles. In a box that is too small, rectangles are empty or inverted, and nothing is hit there.
struct MonthLayout {
    /// The days of a week, from left to right.
    static constexpr std::size_t kColumns = 7;
    /// Weeks that a month may touch.
    static constexpr std::size_t kRows = 6;

    /// The arrows: 0 leads to the previous month, 1 to the next.
    std::array<Rect, 2> spinButtons;
    /// Month and year, the row of letters, and all days together.
    Rect caption;
    Rect dayHeader;
    Rect dayArea;
    /// The usual size of a cell. The first columns may be one pixel wider.
    std::int32_t cellWidth = 0;
    std::int32_t cellHeight = 0;
    /// One for each letter, from left to right.
    std::array<Rect, kColumns> headerCells;
    /// Column by column; use DayCell.
    std::array<Rect, kColumns * kRows> dayCells;

    /// The cell in a column (0 to 6) and a row (0 to 5). There is no check.
    const Rect& DayCell(std::size_t column, std::size_t row) const { return dayCells[column * kRows + row]; }
    /// The spin button at a point; nothing if there is none. The first one wins if they overlap.
    std::optional<std::size_t> SpinButtonAt(platform::Point point) const {
        for (std::size_t which = 0; which < spinButtons.size(); ++which) {
            if (spinButtons[which].Contains(point)) return which;
        }
        return std::nullopt;
    }

    /// The layout for a box of this size whose font has texts of this height.
    /// All three are in twips, `twips` are the factors to pixels. A pure function: it asks nobody.
    /// Raises Overflow for a size that is not a number or beyond 1,000,000,000 pixels, and for a text height beyond 16
    /// bits.
    static MonthLayout Of(double textHeight, double width, double height, const TwipsPerPixel& twips);
};

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
