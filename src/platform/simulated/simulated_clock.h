#pragma once

#include "platform/clock.h"
#include "platform/simulated/world.h"

namespace kwo::platform::simulated {

/// Time that stands still until it is told to move.
/// All sources of time move together, so the tick count and the date never disagree.
/// It begins at 2026-11-16 00:00, with the counter and the tick count at 0. Calls that can fail:
/// QueryPerformanceFrequency and LocalFileTimeToFileTime.
class SimulatedClock final : public Clock {
public:
    explicit SimulatedClock(World& world);

    std::optional<std::int64_t> CounterFrequency() override;
    std::int64_t Counter() override;
    std::uint32_t TickCount() override;
    Date Now() override;
    std::optional<std::int64_t> LocalFileTimeToUtc(std::int64_t fileTime) override;

    /// Moves all sources of time. Runs no messages. A negative span throws std::invalid_argument.
    void Advance(Milliseconds span);
    /// The same in whole milliseconds.
    void Advance(std::int64_t ms) { Advance(Milliseconds::Whole(ms)); }
    /// What has passed since the desktop came into being.
    Milliseconds Elapsed() const { return mElapsed; }

    /// Counts per second; nothing for a machine without the counter.
    /// The counter is 0 when the desktop comes into being.
    void SetCounterFrequency(std::optional<std::int64_t> frequency) { mFrequency = frequency; }
    /// How long a reading of the tick count takes, for loops that do nothing but wait for it.
    /// 0 at first: such a loop would never end.
    std::int64_t msPerReading = 0;
    /// Minutes to add to local time for UTC.
    std::int64_t biasMinutes = 0;

    /// The tick count of this moment. It goes on from there and wraps as the system's does.
    void SetTickCount(std::uint32_t ticks);
    /// The local date and time of this moment, as when the user sets the clock.
    void SetNow(Date now);

private:
    World& mWorld;
    Milliseconds mElapsed;
    std::optional<std::int64_t> mFrequency = 10'000'000;
    std::uint32_t mTicksAtStart = 0;
    Date mSetTo{46342.0};  // 2026-11-16
    Milliseconds mSetAt;
};

}  // namespace kwo::platform::simulated
