#include "controls/month_layout.h"

namespace kwo::controls {

namespace {

using platform::Rounded;

constexpr std::int32_t kGap = 4;

/// Sizes for which no sum below exceeds 32 bits.
std::int32_t Size(double pixels) {
    constexpr std::int32_t kLargest = 1'000'000'000;
    const std::int32_t size = Rounded<std::int32_t>(pixels);
    if (size > kLargest || size < -kLargest) platform::RaiseRuntime(platform::RuntimeError::Overflow);
    return size;
}

}  // namespace

MonthLayout MonthLayout::Of(double textHeight, double width, double height, const TwipsPerPixel& twips) {
    constexpr std::int32_t kAroundText = 6;
    constexpr std::int32_t kShares = 7;
    MonthLayout layout;
    const std::int32_t button = Rounded<std::int16_t>(Rounded<std::int16_t>(textHeight / twips.y) + kAroundText);
    const std::int32_t boxWidth = Size(width / twips.x);
    const std::int32_t boxHeight = Size(height / twips.y);

    auto& [previous, next] = layout.spinButtons;
    previous = {kGap, kGap, kGap + button, kGap + button};
    next = {boxWidth - kGap - button, kGap, boxWidth - kGap, kGap + button};
    layout.caption = {previous.right + 1, previous.top + 1, next.left - 1, previous.bottom};
    layout.cellWidth = (boxWidth - 2 * kGap) / kShares;
    layout.cellHeight = (boxHeight - 2 * kGap - layout.caption.bottom - kGap) / kShares;
    const std::int32_t headerTop = layout.caption.bottom + kGap;
    layout.dayHeader = {kGap, headerTop, next.right, headerTop + layout.cellHeight};
    const std::int32_t daysTop = layout.dayHeader.bottom + kGap;
    layout.dayArea = {kGap, daysTop, next.right, daysTop + static_cast<std::int32_t>(kRows) * layout.cellHeight};

    // The pixels that are left over widen the first columns, one each.
    std::int32_t spare = (next.right - kGap) - kShares * layout.cellWidth;
    std::int32_t left = kGap;
    for (std::size_t column = 0; column < kColumns; ++column) {
        const std::int32_t right = left + layout.cellWidth + (spare-- > 0 ? 1 : 0);
        layout.headerCells[column] = {left, layout.dayHeader.top, right, layout.dayHeader.bottom};
        for (std::size_t row = 0; row < kRows; ++row) {
            const std::int32_t top = layout.dayArea.top + static_cast<std::int32_t>(row) * layout.cellHeight;
            layout.dayCells[column * kRows + row] = {left, top, right, top + layout.cellHeight};
        }
        left = right;
    }
    return layout;
}

}  // namespace kwo::controls
