#pragma once

#include <cstdint>
#include <optional>

#include "platform/clock.h"
#include "platform/values.h"

namespace kwo::frame {

/// The component's one clock for spans and due times.
/// It has nothing to do with the time of day: setting the system's clock does not change it.
class MillisecondClock {
public:
    /// `clock` must outlive it.
    explicit MillisecondClock(platform::Clock& clock) : mClock(clock) {}

    /// Milliseconds since a fixed moment, usually the start of the system, with four decimals.
    /// Never decreases and does not wrap.
    /// Raises nothing.
    /// The source is the high-resolution counter (QueryPerformanceCounter) or, where there is none, the tick count
    /// (GetTickCount), continued beyond its 32 bits. Ask at least once in 49 days then, or a round is missed.
    platform::Milliseconds KWO_TimerMs();

private:
    platform::Milliseconds FromCounter(std::int64_t frequency);
    platform::Milliseconds FromTicks();

    platform::Clock& mClock;
    /// Whether the system was asked for a counter. It is asked once.
    bool mAsked = false;
    /// Counts per second, above 0; nothing where there is no counter.
    std::optional<std::int64_t> mFrequency;
    /// The last tick count, to notice that it has wrapped.
    std::uint32_t mLastTicks = 0;
    /// What the rounds of the tick count add up to, in milliseconds.
    std::int64_t mWrapOffset = 0;
};

}  // namespace kwo::frame
