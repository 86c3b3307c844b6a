#include "platform/twips.h"

#include <gtest/gtest.h>

#include "controls/month_view_fixture.h"

namespace kwo::controls {
namespace {

using platform::TwipsPerPixel;

/// A display's factor, and what is counted with.
struct Factor {
    double exact;
    std::int16_t whole;
};
constexpr Factor kFactors[] = {{15, 15}, {12, 12}, {10, 10}, {1440.0 / 168, 9}, {7.5, 8}, {6, 6}};

class WholeTwipsIntended : public MonthViewTest {
protected:
    void Display(const Factor& factor) {
        desktop.screen.twipsPerPixelX = factor.exact;
        desktop.screen.twipsPerPixelY = factor.exact;
    }
    /// The fixture's calendar, still of 133 by 200 pixels, on a box that counts with the given twips.
    void OpenCounting(double twips) {
        box->SetProperty(u"Width", static_cast<float>(133 * twips));
        box->SetProperty(u"Height", static_cast<float>(200 * twips));
        box->SetMethod(u"TextHeight",
                       [twips](std::span<Variant>) -> Variant { return static_cast<float>(13 * twips); });
        view.emplace(component);
        Ready(On(2026, 12, 1));
    }
    /// Where the calendar's edges and arrows are drawn, in pixels.
    Lines Drawn() {
        desktop.log.Clear();
        view->Resize();
        Lines drawn = desktop.log.Starting("DrawEdge");
        const Lines arrows = desktop.log.Starting("DrawFrameControl");
        drawn.insert(drawn.end(), arrows.begin(), arrows.end());
        return drawn;
    }
    /// The days that are told when each day's cell is clicked in its middle.
    std::vector<int> Clicked(double twips) {
        std::vector<int> told;
        onDate = [&](std::span<Variant> given) {
            told.push_back(static_cast<int>(std::get<Date>(given[1]).days - On(2026, 12, 1).days) + 1);
        };
        for (unsigned day = 1; day <= 31; ++day) {
            const auto [x, y] = PlaceOf(2026, 12, day);
            view->MouseDown(kLeftButton, x / 15 * static_cast<float>(twips), y / 15 * static_cast<float>(twips));
            view->MouseUp();
        }
        return told;
    }
};

TEST_F(WholeTwipsIntended, AFractionIsRoundedHalvesToEven) {
    for (const Factor& factor : kFactors) {
        Display(factor);
        const TwipsPerPixel twips = TwipsPerPixel::Of(desktop.screen);
        EXPECT_EQ(twips.x, factor.whole) << factor.exact;
        EXPECT_EQ(twips.y, factor.whole) << factor.exact;
    }
    desktop.screen.twipsPerPixelX = 8.5;
    desktop.screen.twipsPerPixelY = 7.5;
    EXPECT_EQ(TwipsPerPixel::Of(desktop.screen).x, 8) << "the even one";
    EXPECT_EQ(TwipsPerPixel::Of(desktop.screen).y, 8) << "the axes are not each other's";
}

TEST_F(WholeTwipsIntended, AHostThatCountsWithThemSeesAndHitsEveryDay) {
    std::vector<int> everyDay(31);
    for (int day = 1; day <= 31; ++day)
        everyDay[static_cast<std::size_t>(day) - 1] = day;
    OpenCounting(15);
    const Lines drawn = Drawn();
    ASSERT_FALSE(drawn.empty());
    for (const Factor& factor : kFactors) {
        Display(factor);
        OpenCounting(factor.whole);
        EXPECT_EQ(Drawn(), drawn) << factor.exact;
        EXPECT_EQ(Clicked(factor.whole), everyDay) << factor.exact;
    }
}

TEST_F(WholeTwipsIntended, AHostThatCountsWithTheFractionGetsASmallerCalendar) {
    Display({7.5, 8});
    // A reader would expect 133 pixels, as large as the box is on the screen.
    const MonthLayout layout = MonthLayout::Of(13 * 7.5, 133 * 7.5, 200 * 7.5, TwipsPerPixel::Of(desktop.screen));
    EXPECT_EQ(layout.spinButtons[1].right, 125 - 4);
}

}  // namespace
}  // namespace kwo::controls
