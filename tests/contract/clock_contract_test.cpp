#include "contract_test.h"

namespace kwo::contract {
namespace {

class ClockContract : public ContractTest {
protected:
    /// Lets some time pass, by a clock of the caller's. Messages do not end a wait, but Wine may end one early.
    template <class Elapsed>
    void Pass(std::uint32_t ms, Elapsed elapsedMs) {
        constexpr int kMostWaits = 200;
        for (int waits = 0; waits < kMostWaits && elapsedMs() < ms; ++waits)
            platform().messages.WaitForInput(ms, 0);
    }
    auto ElapsedTicks() {
        return [this, before = clock.TickCount()] { return clock.TickCount() - before; };
    }
    platform::Clock& clock = platform().clock;
};

TEST_F(ClockContract, CounterRunsAtItsFrequencyAndNeverBack) {
    const auto frequency = clock.CounterFrequency();
    ASSERT_TRUE(frequency);
    ASSERT_GT(*frequency, 1000);

    const std::int64_t before = clock.Counter();
    Pass(60, ElapsedTicks());
    const std::int64_t after = clock.Counter();

    EXPECT_GE(after - before, *frequency * 40 / 1000);
    EXPECT_LT(after - before, *frequency * 30);
    EXPECT_GE(clock.Counter(), after);
}

TEST_F(ClockContract, TickCountIsInMilliseconds) {
    const std::int64_t start = clock.Counter();
    const std::int64_t perMs = clock.CounterFrequency().value_or(1000) / 1000;
    const std::uint32_t before = clock.TickCount();
    Pass(60, [&] { return (clock.Counter() - start) / perMs; });
    const std::uint32_t passed = clock.TickCount() - before;

    EXPECT_GE(passed, 40u);
    EXPECT_LT(passed, 30'000u);
}

TEST_F(ClockContract, LocalTimeBecomesUtcByAWholeNumberOfMinutes) {
    constexpr std::int64_t kNoon = 134'237'952'000'000'000;
    constexpr std::int64_t kMinute = 600'000'000;
    constexpr std::int64_t kFourteenHours = 14 * 60 * kMinute;

    const auto utc = clock.LocalFileTimeToUtc(kNoon);

    ASSERT_TRUE(utc.has_value());
    EXPECT_LE(std::abs(*utc - kNoon), kFourteenHours);
    EXPECT_EQ((*utc - kNoon) % kMinute, 0);
}

TEST_F(ClockContract, TimeBeforeTheFirstFileTimeCannotBecomeUtc) {
    EXPECT_TRUE(clock.LocalFileTimeToUtc(14 * 36'000'000'000).has_value());

    platform().errors.SetLast(0);
    const auto utc = clock.LocalFileTimeToUtc(-1);

    // Wine converts every value.
    EXPECT_EQ(utc.has_value(), outside().IsWine());
    EXPECT_EQ(platform().errors.Last(), outside().IsWine() ? 0 : 87);
}

TEST_F(ClockContract, DateIsOfThisCenturyAndMovesOn) {
    const double before = clock.Now().days;
    Pass(1100, ElapsedTicks());
    const double after = clock.Now().days;

    EXPECT_GT(before, 45'000);
    EXPECT_LT(before, 73'000);
    EXPECT_GT(after, before);
    EXPECT_LT(after - before, 1.0 / 24);
}

}  // namespace
}  // namespace kwo::contract
