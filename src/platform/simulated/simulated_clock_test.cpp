#include "platform/simulated/simulated_clock.h"

#include <gtest/gtest.h>

#include <stdexcept>

#include "platform/simulated/simulated_desktop.h"

namespace kwo::platform::simulated {
namespace {

class SimulatedClockTest : public testing::Test {
protected:
    SimulatedDesktop desktop;
    SimulatedClock& clock = desktop.clock;
};

TEST_F(SimulatedClockTest, StandsStillUntilTold) {
    EXPECT_EQ(clock.Counter(), clock.Counter());
    EXPECT_EQ(clock.Now(), clock.Now());

    clock.Advance(250);

    EXPECT_EQ(clock.Elapsed(), Milliseconds::Whole(250));
    EXPECT_THROW(clock.Advance(-1), std::invalid_argument);
}

TEST_F(SimulatedClockTest, CounterCountsInItsFrequency) {
    clock.SetCounterFrequency(3'579'545);
    clock.Advance(1000);
    EXPECT_EQ(clock.Counter(), 3'579'545);
    clock.Advance(1);
    EXPECT_EQ(clock.Counter(), 3'583'124);

    clock.SetCounterFrequency(std::nullopt);
    EXPECT_EQ(clock.CounterFrequency(), std::nullopt);
}

TEST_F(SimulatedClockTest, CounterHoldsNinetyYearsOfAFastClock) {
    clock.SetCounterFrequency(3'000'000'000);
    clock.Advance(std::int64_t{90} * 365 * 86'400'000);

    EXPECT_EQ(clock.Counter(), 8'514'720'000'000'000'000);
}

TEST_F(SimulatedClockTest, SpansBelowAMillisecondCount) {
    clock.Advance(Milliseconds{1530});

    EXPECT_EQ(clock.Counter(), 1530);
    EXPECT_EQ(clock.TickCount(), 0u);
}

TEST_F(SimulatedClockTest, TickCountWraps) {
    clock.Advance(1000);
    clock.SetTickCount(4'294'967'290u);
    clock.Advance(5);
    EXPECT_EQ(clock.TickCount(), 4'294'967'295u);
    clock.Advance(6);
    EXPECT_EQ(clock.TickCount(), 5u);
}

TEST_F(SimulatedClockTest, DateMovesWithTheClockAndCanBeSet) {
    clock.Advance(1000);
    clock.SetNow({46000.5});
    EXPECT_EQ(clock.Now().days, 46000.5);

    clock.Advance(43'200'000);
    EXPECT_EQ(clock.Now().days, 46001.0);
    clock.SetNow({2.0});
    EXPECT_EQ(clock.Now().days, 2.0);
}

TEST_F(SimulatedClockTest, AMachineWithoutACounterCountsNothing) {
    clock.SetCounterFrequency(std::nullopt);
    clock.Advance(1000);

    EXPECT_EQ(clock.CounterFrequency(), std::nullopt);
    EXPECT_EQ(clock.Counter(), 0);
}

}  // namespace
}  // namespace kwo::platform::simulated
