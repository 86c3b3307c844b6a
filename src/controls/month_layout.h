#pragma once

#include <array>
#include <cstdint>
#include <optional>

#include "platform/geometry.h"
#include "platform/twips.h"

namespace kwo::controls {

using platform::Rect;
using platform::TwipsPerPixel;

/// The places of everything in a calendar, in pixels of its picture box.
struct MonthLayout {
    static constexpr std::size_t kColumns = 7;
    static constexpr std::size_t kRows = 6;

    std::array<Rect, 2> spinButtons;  ///< 0 leads to the previous month, 1 to the next
    Rect caption;
    Rect dayHeader;
    Rect dayArea;
    std::int32_t cellWidth = 0;
    std::int32_t cellHeight = 0;
    std::array<Rect, kColumns> headerCells;
    std::array<Rect, kColumns * kRows> dayCells;  ///< column by column; use DayCell

    /// The cell in a column (0 to 6) and a row (0 to 5).
    const Rect& DayCell(std::size_t column, std::size_t row) const { return dayCells[column * kRows + row]; }
    /// The spin button at a point; nothing if there is none. The first one wins if they overlap.
    std::optional<std::size_t> SpinButtonAt(platform::Point point) const {
        for (std::size_t which = 0; which < spinButtons.size(); ++which) {
            if (spinButtons[which].Contains(point)) return which;
        }
        return std::nullopt;
    }

    /// The layout for a box of this size whose font has texts of this height. All three are in twips. Raises Overflow.
    static MonthLayout Of(double textHeight, double width, double height, const TwipsPerPixel& twips);
};

}  // namespace kwo::controls
