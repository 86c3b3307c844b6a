#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <memory>
#include <random>
#include <vector>

#include "component/component.h"
#include "platform/simulated/simulated_desktop.h"
#include "timers/time_double.h"
#include "timers/timer_registry.h"

// A year of a program that has many timers.

namespace kwo::timers {
namespace {

using platform::Date;
using platform::Milliseconds;

constexpr int kOwners = 10'000;

constexpr std::int64_t kScale = Milliseconds::kScale;
constexpr double kStart = 46'342.4;
constexpr double kMillisecondsPerDay = 86'400'000;
constexpr std::int64_t kYearMs = 365LL * 86'400'000;
/// A delay that is rounded down is waited for in one more step of the system's timer.
constexpr std::int64_t kLatestMs = 2;

class YearClock final : public platform::Clock {
public:
    std::optional<std::int64_t> CounterFrequency() override { return 1'000 * kScale; }
    std::int64_t Counter() override { return now; }
    std::uint32_t TickCount() override { return 0; }
    std::optional<std::int64_t> LocalFileTimeToUtc(std::int64_t fileTime) override { return fileTime; }
    Date Now() override {
        return {kStart + static_cast<double>(now) / static_cast<double>(kScale) / kMillisecondsPerDay};
    }

    std::int64_t now = 0;
};

class OneTimer final : public platform::TimerService {
public:
    explicit OneTimer(YearClock& clock) : mClock(clock) {}

    std::int32_t Start(std::uint32_t delayMs, platform::TimerHandler& handler) override {
        mHandler = &handler;
        mPeriod = std::max<std::int64_t>(1, delayMs) * kScale;
        mNext = mClock.now + mPeriod;
        return ++mLastId;
    }
    void Stop(std::int32_t) override { mHandler = nullptr; }

    /// Time goes to the next message of the timer; false when there is none before `end`.
    bool FireNext(std::int64_t end) {
        if (mHandler == nullptr || mNext > end) return false;
        mClock.now = mNext;
        mNext += mPeriod;
        mHandler->TimerProc();
        return true;
    }

private:
    YearClock& mClock;
    platform::TimerHandler* mHandler = nullptr;
    std::int64_t mPeriod = 0;
    std::int64_t mNext = 0;
    std::int32_t mLastId = 0;
};

/// What is expected next, in milliseconds since the start, and what came.
class Owner : public TimerOwner {
public:
    Owner(YearClock& clock) : mClock(clock) {}

    void TimerTick(std::int32_t&, std::int32_t&, Date& newDateTime) final {
        constexpr std::int64_t kDateStep = 100;  // what a date of our days cannot tell apart, in ten-thousandths
        const std::int64_t late = mClock.now - expected;
        if (late < -kDateStep) ++early;
        latestMs = std::max(latestMs, late / kScale);
        ++came;
        Next(newDateTime);
    }
    virtual void Begin(MKWOTimer& timers) = 0;
    virtual void Next(Date& newDateTime) = 0;
    void AddOwnerReference() noexcept final {}
    void ReleaseOwner() noexcept final {}

    std::int64_t expected = 0;  ///< scaled
    std::int64_t latestMs = 0;
    int came = 0;
    int early = 0;

protected:
    Date At(std::int64_t scaled) {
        return {kStart + static_cast<double>(scaled) / static_cast<double>(kScale) / kMillisecondsPerDay};
    }

    YearClock& mClock;
};

class Ticking final : public Owner {
public:
    Ticking(YearClock& clock, std::int32_t intervalMs) : Owner(clock), mIntervalMs(intervalMs) {}
    void Begin(MKWOTimer& timers) override {
        expected = mIntervalMs * kScale;
        timers.AddTick(*this, mIntervalMs);
    }
    void Next(Date&) override { expected += mIntervalMs * kScale; }

private:
    std::int32_t mIntervalMs;
};

/// An alarm that sets itself again, a fixed time later.
class Recurring final : public Owner {
public:
    Recurring(YearClock& clock, std::int64_t firstMs, std::int64_t stepMs)
        : Owner(clock), mStep(stepMs * kScale), mFirst(firstMs * kScale) {}
    void Begin(MKWOTimer& timers) override {
        expected = mFirst;
        timers.AddAlarmEntry(*this, At(expected), 7, {});
    }
    void Next(Date& newDateTime) override {
        expected += mStep;
        newDateTime = At(expected);
    }

private:
    std::int64_t mStep;
    std::int64_t mFirst;
};

/// A date so far ahead that it has to be moved on a few times.
class Distant final : public Owner {
public:
    Distant(YearClock& clock, std::int64_t targetMs) : Owner(clock), mTarget(targetMs * kScale) {}
    void Begin(MKWOTimer& timers) override {
        timers.AddAlarmEntry(*this, At(mTarget), 3, {});
        expected = Reach();
    }
    void Next(Date& newDateTime) override {
        if (expected == mTarget) {
            arrived = true;
            return;
        }
        newDateTime = At(mTarget);
        expected = Reach();
    }
    bool arrived = false;

private:
    std::int64_t Reach() {
        const double midnight = std::floor(mClock.Now().days) + 60;
        return std::min<std::int64_t>(
            mTarget, std::llrint((midnight - kStart) * kMillisecondsPerDay * static_cast<double>(kScale)));
    }
    std::int64_t mTarget;
};

TEST(TimerYear, NoTimerIsLostEarlyTwiceOrLate) {
    YearClock clock;
    OneTimer platformTimer(clock);
    platform::simulated::SimulatedDesktop desktop;
    component::Component component(WithTime(desktop.Services(), clock, platformTimer));
    std::mt19937 random(20261121);
    const auto between = [&random](std::int64_t low, std::int64_t high) {
        return std::uniform_int_distribution<std::int64_t>(low, high)(random);
    };
    struct Expectation {
        std::unique_ptr<Owner> owner;
        std::int64_t count;
    };
    std::vector<Expectation> all;
    for (int number = 0; number < kOwners; ++number) {
        switch (number % 4) {
            case 0:
            case 1: {
                const auto interval = between(3'600'000, 86'400'000);
                all.push_back({std::make_unique<Ticking>(clock, static_cast<std::int32_t>(interval)),
                               (kYearMs - kLatestMs) / interval});
                break;
            }
            case 2: {
                const std::int64_t first = between(2'000, 86'400'000);
                const std::int64_t step = between(3'600'000, 20 * 86'400'000LL);
                all.push_back(
                    {std::make_unique<Recurring>(clock, first, step), (kYearMs - kLatestMs - first) / step + 1});
                break;
            }
            default:
                all.push_back({std::make_unique<Distant>(clock, between(61 * 86'400'000LL, 360 * 86'400'000LL)), 0});
                break;
        }
    }
    component.timers.AdjustTimerCount(+1);
    for (const Expectation& one : all)
        one.owner->Begin(component.timers);

    while (platformTimer.FireNext(kYearMs * kScale))
        continue;

    for (std::size_t number = 0; number < all.size(); ++number) {
        const Owner& owner = *all[number].owner;
        ASSERT_EQ(owner.early, 0) << number;
        ASSERT_LT(owner.latestMs, kLatestMs) << number;
        if (const auto* const distant = dynamic_cast<const Distant*>(&owner)) {
            ASSERT_TRUE(distant->arrived) << number;
        } else {
            ASSERT_GE(owner.came, all[number].count) << number;
            ASSERT_LE(owner.came, all[number].count + 1) << number << ": what was due at the very end";
        }
    }
    for (const Expectation& one : all)
        component.timers.CancelEntries(*one.owner, 0, 0);
    EXPECT_EQ(component.timers.Table().ActiveCount(), 0);
}

}  // namespace
}  // namespace kwo::timers
