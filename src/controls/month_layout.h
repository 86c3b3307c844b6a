#pragma once

#include <array>
#include <cstdint>
#include <optional>

#include "controls/pixels.h"
#include "platform/geometry.h"

namespace kwo::controls {

using platform::Rect;

/// Where everything of a calendar lies in its picture box, in pixels.
struct MonthLayout {
    static constexpr std::size_t kColumns = 7;
    static constexpr std::size_t kRows = 6;

    std::array<Rect, 2> spinButtons;
    Rect caption;
    Rect dayHeader;
    Rect dayArea;
    std::int32_t cellWidth = 0;
    std::int32_t cellHeight = 0;
    std::array<Rect, kColumns> headerCells;
    std::array<Rect, kColumns * kRows> dayCells;  ///< column by column

    const Rect& DayCell(std::size_t column, std::size_t row) const { return dayCells[column * kRows + row]; }
    /// Which spin button, if any, lies at the point. The first one wins where they overlap.
    std::optional<std::size_t> SpinButtonAt(platform::Point point) const {
        for (std::size_t which = 0; which < spinButtons.size(); ++which) {
            if (spinButtons[which].Contains(point)) return which;
        }
        return std::nullopt;
    }

    /// Of a box of that size, whose font has texts of that height; all in twips. Raises Overflow.
    static MonthLayout Of(double textHeight, double width, double height, const TwipsPerPixel& twips);
};

}  // namespace kwo::controls
