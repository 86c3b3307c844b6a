#pragma once

#include <cstdint>
#include <optional>

#include "platform/clock.h"
#include "platform/values.h"

namespace kwo::frame {

/// The component's one clock for spans and due times. It has nothing to do with the time of day.
class MillisecondClock {
public:
    /// `clock` must outlive it.
    explicit MillisecondClock(platform::Clock& clock) : mClock(clock) {}

    /// Milliseconds since a fixed moment, with four decimals. Never decreases and does not wrap. The source is the
    /// high-resolution counter (QueryPerformanceCounter) or, where there is none, the tick count (GetTickCount),
    /// continued beyond its 32 bits.
    platform::Milliseconds KWO_TimerMs();

private:
    platform::Milliseconds FromCounter(std::int64_t frequency);
    platform::Milliseconds FromTicks();

    platform::Clock& mClock;
    bool mAsked = false;
    std::optional<std::int64_t> mFrequency;
    std::uint32_t mLastTicks = 0;
    std::int64_t mWrapOffset = 0;
};

}  // namespace kwo::frame
