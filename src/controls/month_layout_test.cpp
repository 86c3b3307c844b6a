#include "controls/month_layout.h"

#include <gtest/gtest.h>

namespace kwo::controls {
namespace {

constexpr TwipsPerPixel kTwips = {15, 15};

TEST(MonthLayoutTest, ASmallBox) {
    const MonthLayout layout = MonthLayout::Of(195, 2000, 3000, kTwips);
    EXPECT_EQ(layout.spinButtons[0], (Rect{4, 4, 23, 23}));
    EXPECT_EQ(layout.spinButtons[1], (Rect{110, 4, 129, 23}));
    EXPECT_EQ(layout.caption, (Rect{24, 5, 109, 23}));
    EXPECT_EQ(layout.cellWidth, 17);
    // (200 - 8 - 23 - 4) / 7
    EXPECT_EQ(layout.cellHeight, 23);
    EXPECT_EQ(layout.dayHeader, (Rect{4, 27, 129, 50}));
    EXPECT_EQ(layout.dayArea, (Rect{4, 54, 129, 54 + 6 * 23}));
    const std::int32_t edges[] = {4, 22, 40, 58, 76, 94, 112, 129};
    for (std::size_t column = 0; column < 7; ++column) {
        EXPECT_EQ(layout.headerCells[column], (Rect{edges[column], 27, edges[column + 1], 50})) << column;
        for (std::int32_t row = 0; row < 6; ++row) {
            EXPECT_EQ(layout.dayCells[column * 6 + static_cast<std::size_t>(row)],
                      (Rect{edges[column], 54 + row * 23, edges[column + 1], 77 + row * 23}));
            EXPECT_EQ(layout.DayCell(column, static_cast<std::size_t>(row)),
                      layout.dayCells[column * 6 + static_cast<std::size_t>(row)]);
        }
    }
}

TEST(MonthLayoutTest, TheColumnsFillTheWidthAndDifferByAPixelAtMost) {
    for (std::int32_t width = 8; width <= 4000; ++width) {
        const MonthLayout layout = MonthLayout::Of(195, width * 15.0, 3000, kTwips);
        EXPECT_EQ(layout.headerCells[0].left, 4);
        EXPECT_EQ(layout.headerCells[6].right, width - 4) << width;
        for (std::size_t column = 0; column < 7; ++column) {
            const std::int32_t cell = layout.headerCells[column].right - layout.headerCells[column].left;
            EXPECT_TRUE(cell == layout.cellWidth || cell == layout.cellWidth + 1) << width;
            if (column == 0) continue;
            EXPECT_EQ(layout.headerCells[column].left, layout.headerCells[column - 1].right);
            EXPECT_LE(cell, layout.headerCells[column - 1].right - layout.headerCells[column - 1].left);
        }
    }
}

TEST(MonthLayoutTest, BoxesOfNothingTruncateTowardsZero) {
    const MonthLayout layout = MonthLayout::Of(195, 0, 0, kTwips);
    // (0 - 8) / 7 and (0 - 8 - 23 - 4) / 7
    EXPECT_EQ(layout.cellWidth, -1);
    EXPECT_EQ(layout.cellHeight, -5);
    EXPECT_EQ(layout.spinButtons[1], (Rect{-23, 4, -4, 23}));
    EXPECT_EQ(MonthLayout::Of(195, 14 * 15, 300, kTwips).cellWidth, 0);
    EXPECT_EQ(MonthLayout::Of(195, 15 * 15, 300, kTwips).cellWidth, 1);
    EXPECT_EQ(MonthLayout::Of(195, 225, 41 * 15, kTwips).cellHeight, 0);
    EXPECT_EQ(MonthLayout::Of(195, 225, 42 * 15, kTwips).cellHeight, 1);
}

TEST(MonthLayoutTest, SizesAreRoundedToTheNearestPixelHalvesToEven) {
    const auto width = [](double twips) {
        return MonthLayout::Of(195, twips, 3000, {10, 10}).spinButtons[1].right + 4;
    };
    EXPECT_EQ(width(2004), 200);
    EXPECT_EQ(width(2005), 200);
    EXPECT_EQ(width(2006), 201);
    EXPECT_EQ(width(2015), 202);
    const auto button = [](double text) {
        return MonthLayout::Of(text, 2000, 3000, {10, 10}).spinButtons[0].right - 4;
    };
    EXPECT_EQ(button(195), 26);
    EXPECT_EQ(button(185), 24);
    EXPECT_EQ(button(0), 6);
    EXPECT_EQ(button(-100), -4);
}

TEST(MonthLayoutTest, TheAxesHaveTheirOwnTwips) {
    const MonthLayout layout = MonthLayout::Of(200, 2000, 3000, {20, 10});
    EXPECT_EQ(layout.spinButtons[1].right, 96);
    EXPECT_EQ(layout.spinButtons[0].bottom, 4 + 26);
    EXPECT_EQ(layout.cellHeight, (300 - 8 - 30 - 4) / 7);
}

TEST(MonthLayoutTest, ASpinButtonIsFoundInsideItsEdges) {
    const MonthLayout layout = MonthLayout::Of(195, 2000, 3000, kTwips);
    for (std::int32_t y = 0; y < 30; ++y) {
        for (std::int32_t x = 0; x < 134; ++x) {
            std::optional<std::size_t> expected;
            if (y >= 4 && y < 23 && x >= 4 && x < 23) expected = 0;
            if (y >= 4 && y < 23 && x >= 110 && x < 129) expected = 1;
            EXPECT_EQ(layout.SpinButtonAt({x, y}), expected) << x << ',' << y;
        }
    }
    // In a narrow box both lie at the same place.
    EXPECT_EQ(MonthLayout::Of(195, 27 * 15, 3000, kTwips).SpinButtonAt({10, 10}), 0u);
}

TEST(MonthLayoutTest, SizesBeyondThePlatformOverflow) {
    const auto raises = [](double text, double width, double height) {
        try {
            MonthLayout::Of(text, width, height, kTwips);
            return 0;
        } catch (const platform::ComponentError& error) {
            return error.number;
        }
    };
    EXPECT_EQ(raises(195, 1e12, 300), 6);
    EXPECT_EQ(raises(195, 300, -1e12), 6);
    // A thousand million pixels is the limit.
    EXPECT_EQ(raises(195, 15e9, -15e9), 0);
    EXPECT_EQ(raises(195, 15e9 + 15, 300), 6);
    EXPECT_EQ(raises(195, 300, -15e9 - 15), 6);
    EXPECT_EQ(raises(1e6, 300, 300), 6);
    EXPECT_EQ(raises(195, std::nan(""), 300), 6);
    EXPECT_EQ(raises(32'761 * 15.0, 300, 300), 0);
    EXPECT_EQ(raises(32'762 * 15.0, 300, 300), 6);
}

}  // namespace
}  // namespace kwo::controls
