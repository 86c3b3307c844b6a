#include "sysinfo/sys_metrics.h"

#include <gtest/gtest.h>

#include <limits>

#include "platform/component_error.h"
#include "platform/simulated/simulated_desktop.h"
#include "support/raised.h"

namespace kwo::sysinfo {
namespace {

using platform::Missing;
using platform::Text;
using platform::Variant;
using test_support::RaisedNumber;

enum class Expect { X, Y, Pixels, Flag, FirstBit, Short, Long };

struct Row {
    Metric metric;
    std::int32_t index;
    Expect expect;
};

// Typed by hand, apart from the list that makes the members: this is what the members must be.
constexpr Row kRows[] = {
    {Metric::ScreenX, 0, Expect::X},
    {Metric::ScreenY, 1, Expect::Y},
    {Metric::VScrollX, 2, Expect::X},
    {Metric::HScrollY, 3, Expect::Y},
    {Metric::BorderX, 5, Expect::X},
    {Metric::BorderY, 6, Expect::Y},
    {Metric::DialogFrameX, 7, Expect::X},
    {Metric::DialogFrameY, 8, Expect::Y},
    {Metric::VScrollThumbY, 9, Expect::Y},
    {Metric::HScrollThumbX, 10, Expect::X},
    {Metric::IconX, 11, Expect::X},
    {Metric::IconY, 12, Expect::Y},
    {Metric::CursorX, 13, Expect::X},
    {Metric::CursorY, 14, Expect::Y},
    {Metric::FullScreenWindowX, 16, Expect::X},
    {Metric::FullScreenWindowY, 17, Expect::Y},
    {Metric::WindowMinX, 28, Expect::X},
    {Metric::WindowMinY, 29, Expect::Y},
    {Metric::WindowBtnX, 30, Expect::X},
    {Metric::WindowBtnY, 31, Expect::Y},
    {Metric::FrameX, 32, Expect::X},
    {Metric::FrameY, 33, Expect::Y},
    {Metric::MinTrackX, 34, Expect::X},
    {Metric::MinTrackY, 35, Expect::Y},
    {Metric::DoubleClickX, 36, Expect::X},
    {Metric::DoubleClickY, 37, Expect::Y},
    {Metric::IconSpacingX, 38, Expect::X},
    {Metric::IconSpacingY, 39, Expect::Y},
    {Metric::DragX, 68, Expect::X},
    {Metric::DragY, 69, Expect::Y},
    {Metric::Edge3DX, 45, Expect::X},
    {Metric::Edge3DY, 46, Expect::Y},
    {Metric::FixedFrameX, 7, Expect::X},
    {Metric::FixedFrameY, 8, Expect::Y},
    {Metric::MaximizedX, 61, Expect::X},
    {Metric::MaximizedY, 62, Expect::Y},
    {Metric::MaxTrackX, 59, Expect::X},
    {Metric::MaxTrackY, 60, Expect::Y},
    {Metric::MenuCheckX, 71, Expect::X},
    {Metric::MenuCheckY, 72, Expect::Y},
    {Metric::MenuSizeX, 54, Expect::X},
    {Metric::MenuSizeY, 55, Expect::Y},
    {Metric::MinimizedX, 57, Expect::X},
    {Metric::MinimizedY, 58, Expect::Y},
    {Metric::MinSpacingX, 47, Expect::Pixels},
    {Metric::MinSpacingY, 48, Expect::Y},
    {Metric::SizeFrameX, 32, Expect::X},
    {Metric::SizeFrameY, 33, Expect::Y},
    {Metric::SmallIconX, 49, Expect::X},
    {Metric::SmallIconY, 50, Expect::Y},
    {Metric::SmallBtnX, 52, Expect::X},
    {Metric::SmallBtnY, 53, Expect::Y},
    {Metric::DebugVersion, 22, Expect::Flag},
    {Metric::SwapButtons, 23, Expect::Flag},
    {Metric::SingleMenuBarY, 15, Expect::Y},
    {Metric::VScrollArrowY, 20, Expect::Y},
    {Metric::HScrollArrowX, 21, Expect::X},
    {Metric::KanjiWindowY, 18, Expect::Y},
    {Metric::MousePresent, 19, Expect::Flag},
    {Metric::CaptionAreaY, 4, Expect::Y},
    {Metric::SmallCaptionAreaY, 51, Expect::Y},
    {Metric::MenuDropRightAligned, 40, Expect::Flag},
    {Metric::PenWindows, 41, Expect::Flag},
    {Metric::DBCSEnabled, 42, Expect::Flag},
    {Metric::MouseButtons, 43, Expect::Short},
    {Metric::Arrange, 56, Expect::Long},
    {Metric::CleanBoot, 67, Expect::Short},
    {Metric::MidEastEnabled, 74, Expect::Flag},
    {Metric::Network, 63, Expect::FirstBit},
    {Metric::Secure, 44, Expect::Flag},
    {Metric::SlowMachine, 73, Expect::Flag},
};

class SysMetrics : public testing::Test {
protected:
    static constexpr std::int16_t kTwips = 1;
    static constexpr std::int16_t kPixels = 3;

    static bool IsDimension(const Row& row) {
        return row.expect == Expect::X || row.expect == Expect::Y || row.expect == Expect::Pixels;
    }
    std::int32_t& Value(Metric metric) {
        for (const Row& row : kRows) {
            if (row.metric == metric) return desktop.metrics.values[row.index];
        }
        throw std::out_of_range("no such metric");
    }

    platform::simulated::SimulatedDesktop desktop;
    component::Component component{desktop.Services()};
    KWOSysMetrics metrics{component};
};

TEST_F(SysMetrics, EveryDimensionIsItsMetricInPixelsAndInTwipsOfItsAxis) {
    desktop.screen.twipsPerPixelX = 12;
    desktop.screen.twipsPerPixelY = 10;
    KWOSysMetrics other(component);
    for (const Row& row : kRows) {
        if (!IsDimension(row)) continue;
        desktop.metrics.values = {{row.index, 1'000 + row.index}};
        const std::int32_t pixels = 1'000 + row.index;
        EXPECT_EQ(other.Dimension(row.metric, Missing{}), pixels) << row.index;
        EXPECT_EQ(other.Dimension(row.metric, kPixels), pixels) << row.index;
        const int factor = row.expect == Expect::X ? 12 : row.expect == Expect::Y ? 10 : 1;
        EXPECT_EQ(other.Dimension(row.metric, kTwips), pixels * factor) << row.index;
    }
    EXPECT_EQ(std::size(kRows), 71u);
}

TEST_F(SysMetrics, FlagsAreTrueForEverythingButZero) {
    for (const Row& row : kRows) {
        if (row.expect != Expect::Flag) continue;
        for (const std::int32_t value : {0, 1, 2, -1, 256}) {
            desktop.metrics.values = {{row.index, value}};
            EXPECT_EQ(metrics.Flag(row.metric), value != 0) << row.index << " " << value;
        }
    }
}

TEST_F(SysMetrics, NetworkIsTheFirstBit) {
    for (const std::int32_t value : {0, 1, 2, 3, 4, -1, -2}) {
        Value(Metric::Network) = value;
        EXPECT_EQ(metrics.Flag(Metric::Network), value == 1 || value == 3 || value == -1) << value;
    }
}

TEST_F(SysMetrics, CountsOfSixteenBitsAreChecked) {
    for (const Metric metric : {Metric::MouseButtons, Metric::CleanBoot}) {
        for (const std::int32_t value : {-32'768, -1, 0, 3, 32'767}) {
            Value(metric) = value;
            EXPECT_EQ(metrics.Short(metric), value);
        }
        for (const std::int32_t value : {-32'769, 32'768, 65'536}) {
            Value(metric) = value;
            EXPECT_EQ(RaisedNumber([&] { metrics.Short(metric); }), 6) << value;
        }
    }
    Value(Metric::Arrange) = 65'536;
    EXPECT_EQ(metrics.Long(Metric::Arrange), 65'536);
}

TEST_F(SysMetrics, PixelsAreTheFirstMode) {
    Value(Metric::ScreenX) = 1024;

    EXPECT_EQ(metrics.ScaleMode(), 3);
    EXPECT_EQ(metrics.Dimension(Metric::ScreenX, Missing{}), 1024);
    EXPECT_EQ(metrics.Dimension(Metric::ScreenX, kTwips), 15'360);
    EXPECT_EQ(component.ProgramName(), u"KWOUtil");
}

TEST_F(SysMetrics, ArgumentGoesBeforeThePropertyAndIsForgotten) {
    Value(Metric::ScreenX) = 100;
    metrics.SetScaleMode(kTwips);

    EXPECT_EQ(metrics.Dimension(Metric::ScreenX, kPixels), 100);
    EXPECT_EQ(metrics.Dimension(Metric::ScreenX, Missing{}), 1'500);
    EXPECT_EQ(metrics.Dimension(Metric::ScreenX, std::int16_t{2}), 100);
    EXPECT_EQ(metrics.ScaleMode(), 1);
}

TEST_F(SysMetrics, ArgumentIsConvertedByTheAutomationRules) {
    Value(Metric::ScreenX) = 100;
    for (const Variant& twips : {Variant(1.0), Variant(Text(u"1")), Variant(std::int32_t{1}), Variant(1.4)})
        EXPECT_EQ(metrics.Dimension(Metric::ScreenX, twips), 1'500);
    for (const Variant& pixels : {Variant(platform::Empty{}), Variant(true), Variant(Text(u"3"))})
        EXPECT_EQ(metrics.Dimension(Metric::ScreenX, pixels), 100);
    // An empty argument is the number 0, not a missing one.
    metrics.SetScaleMode(kTwips);
    EXPECT_EQ(metrics.Dimension(Metric::ScreenX, platform::Empty{}), 100);
    for (const Metric metric : {Metric::ScreenX, Metric::MinSpacingX}) {
        EXPECT_EQ(RaisedNumber([&] { metrics.Dimension(metric, Text(u"x")); }), 13);
        EXPECT_EQ(RaisedNumber([&] { metrics.Dimension(metric, std::int32_t{32'768}); }), 6);
        EXPECT_EQ(RaisedNumber([&] { metrics.Dimension(metric, platform::Null{}); }), 13);
    }
}

TEST_F(SysMetrics, ProductThatDoesNotFitOverflows) {
    constexpr std::int32_t kMost = std::numeric_limits<std::int32_t>::max();
    for (const std::int32_t fits : {kMost / 15, -kMost / 15, 0}) {
        Value(Metric::ScreenX) = fits;
        EXPECT_EQ(metrics.Dimension(Metric::ScreenX, kTwips), fits * 15);
    }
    for (const std::int32_t tooLarge : {kMost / 15 + 1, -kMost / 15 - 1, kMost}) {
        Value(Metric::ScreenX) = tooLarge;
        EXPECT_EQ(RaisedNumber([&] { metrics.Dimension(Metric::ScreenX, kTwips); }), 6);
        EXPECT_EQ(metrics.Dimension(Metric::ScreenX, kPixels), tooLarge);
    }
}

TEST_F(SysMetrics, TwipsPerPixelAreRoundedHalvesToEvenAtCreation) {
    Value(Metric::ScreenX) = 100;
    Value(Metric::ScreenY) = 100;
    struct Case {
        double exact;
        int rounded;
    };
    for (const Case& row :
         {Case{15, 15}, Case{12, 12}, Case{10, 10}, Case{7.5, 8}, Case{8.5, 8}, Case{11.52, 12}, Case{9.4, 9}}) {
        desktop.screen.twipsPerPixelX = row.exact;
        desktop.screen.twipsPerPixelY = row.exact + 10;
        KWOSysMetrics other(component);
        desktop.screen.twipsPerPixelX = 99;
        EXPECT_EQ(other.Dimension(Metric::ScreenX, kTwips), row.rounded * 100) << row.exact;
        EXPECT_EQ(other.Dimension(Metric::ScreenY, kTwips), (row.rounded + 10) * 100) << row.exact;
    }
}

TEST_F(SysMetrics, MetricIsAskedForAtEveryCall) {
    Value(Metric::ScreenX) = 100;
    EXPECT_EQ(metrics.Dimension(Metric::ScreenX, Missing{}), 100);
    Value(Metric::ScreenX) = 200;
    EXPECT_EQ(metrics.Dimension(Metric::ScreenX, Missing{}), 200);
}

class ScaleModeIntended : public SysMetrics {};

TEST_F(ScaleModeIntended, OneOddValueSticksAndLaterOnesAreIgnored) {
    Value(Metric::ScreenX) = 100;
    for (const std::int16_t mode : std::initializer_list<std::int16_t>{kTwips, kPixels, kTwips}) {
        metrics.SetScaleMode(mode);
        EXPECT_EQ(metrics.ScaleMode(), mode);
    }
    metrics.SetScaleMode(2);
    EXPECT_EQ(metrics.ScaleMode(), 2);

    metrics.SetScaleMode(kTwips);
    // A reader would expect 1.
    EXPECT_EQ(metrics.ScaleMode(), 2);
    EXPECT_EQ(metrics.Dimension(Metric::ScreenX, Missing{}), 100);
}

class MinSpacingIntended : public SysMetrics {};

TEST_F(MinSpacingIntended, WidthStaysInPixels) {
    Value(Metric::MinSpacingX) = 100;
    Value(Metric::MinSpacingY) = 100;

    // A reader would expect 1500 of both.
    EXPECT_EQ(metrics.Dimension(Metric::MinSpacingX, kTwips), 100);
    EXPECT_EQ(metrics.Dimension(Metric::MinSpacingY, kTwips), 1'500);
}

}  // namespace
}  // namespace kwo::sysinfo
