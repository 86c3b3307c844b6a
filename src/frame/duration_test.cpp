#include "frame/duration.h"

#include "frame/frame_fixture.h"

namespace kwo::frame {
namespace {

TEST(FormatDurationTest, ShowsDaysOnlyWhenThereIsAWholeOne) {
    platform::simulated::SimulatedDesktop desktop;
    constexpr double kSecond = 1.0 / 86'400;
    struct Row {
        double days;
        TextView text;
    };
    for (const Row& row : {Row{0, u"0:00:00"}, Row{26.0 / 24, u"1:02:00:00"}, Row{-26.0 / 24, u"1:02:00:00"},
                           Row{1, u"1:00:00:00"}, Row{10 * kSecond, u"0:00:10"}, Row{-61 * kSecond, u"0:01:01"},
                           Row{1 - kSecond, u"23:59:59"}, Row{1 - kSecond / 4, u"1:00:00:00"},
                           Row{2 - kSecond / 4, u"2:00:00:00"}, Row{100.5, u"100:12:00:00"}, Row{1.5, u"1:12:00:00"}}) {
        EXPECT_EQ(KWO_FormatDuration(desktop.conversions, {row.days}), row.text) << row.days;
    }
}

}  // namespace
}  // namespace kwo::frame
