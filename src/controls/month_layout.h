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
///
/// Drawing and hit testing read the same layout, so the user hits what is drawn. A fresh one has only empty
/// rectangles. In a box that is too small, rectangles are empty or inverted, and nothing is hit there.
struct MonthLayout {
    static constexpr std::size_t kColumns = 7;
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

}  // namespace kwo::controls
