#include "frame/millisecond_clock.h"

#include "frame/frame_fixture.h"

namespace kwo::frame {
namespace {

using platform::Milliseconds;

/// A counter that a test sets to any value.
class SetClock final : public platform::Clock {
public:
    std::optional<std::int64_t> CounterFrequency() override { return ++asked, frequency; }
    std::int64_t Counter() override { return counter; }
    std::uint32_t TickCount() override { return ticks; }
    platform::Date Now() override { return {}; }
    std::optional<std::int64_t> LocalFileTimeToUtc(std::int64_t) override { return std::nullopt; }

    std::optional<std::int64_t> frequency;
    std::int64_t counter = 0;
    std::uint32_t ticks = 0;
    int asked = 0;
};

TEST(MillisecondClockTest, CounterIsScaledExactlyWithFourDecimals) {
    struct Row {
        std::int64_t counter, frequency, scaled;
    };
    for (const Row& row : {
             Row{0, 10'000'000, 0},
             Row{1, 10'000'000, 1},
             Row{10'000'000, 10'000'000, 10'000'000},
             Row{1, 3, 3'333'333},
             Row{2, 3, 6'666'667},
             Row{1, 20'000'000, 0},  // half of the last decimal, to the even neighbour
             Row{3, 20'000'000, 2},  // one and a half
             Row{5, 20'000'000, 2},  // two and a half
             Row{5'000'001, 20'000'000, 2'500'000},
             Row{INT64_MAX, 10'000'000, INT64_MAX},
             Row{9'223'372'036'854'775'807, 3'579'545'000'000, 25'766'883'882'881},
             Row{899'999'999'999'999'999, 900'000'000'000'000'000, 10'000'000},
             Row{450'000'000'000'000'000, 900'000'000'000'000'000, 5'000'000},
         }) {
        SetClock platformClock;
        platformClock.frequency = row.frequency;
        platformClock.counter = row.counter;
        MillisecondClock clock(platformClock);
        EXPECT_EQ(clock.KWO_TimerMs().scaled, row.scaled) << row.counter << " / " << row.frequency;
    }
}

TEST(MillisecondClockTest, TheFrequencyIsAskedOnce) {
    SetClock platformClock;
    platformClock.frequency = 1000;
    MillisecondClock clock(platformClock);
    clock.KWO_TimerMs();
    platformClock.counter = 5000;
    EXPECT_EQ(clock.KWO_TimerMs(), Milliseconds::Whole(5000));
    EXPECT_EQ(platformClock.asked, 1);
}

TEST(MillisecondClockTest, WithoutACounterTheTickCountGoesOnPastItsWrap) {
    SetClock platformClock;
    platformClock.ticks = 4'294'967'290u;
    MillisecondClock clock(platformClock);
    EXPECT_EQ(clock.KWO_TimerMs(), Milliseconds::Whole(4'294'967'290));
    platformClock.ticks = 5;
    EXPECT_EQ(clock.KWO_TimerMs(), Milliseconds::Whole(4'294'967'301));
    platformClock.ticks = 5;
    EXPECT_EQ(clock.KWO_TimerMs(), Milliseconds::Whole(4'294'967'301));
    platformClock.ticks = 4;
    EXPECT_EQ(clock.KWO_TimerMs(), Milliseconds::Whole(2 * 4'294'967'296 + 4));
}

TEST(MillisecondClockTest, AFrequencyOfZeroIsNoCounter) {
    SetClock platformClock;
    platformClock.frequency = 0;
    platformClock.ticks = 7;
    MillisecondClock clock(platformClock);
    EXPECT_EQ(clock.KWO_TimerMs(), Milliseconds::Whole(7));
}

}  // namespace
}  // namespace kwo::frame
