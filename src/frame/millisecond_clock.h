#pragma once

#include <cstdint>
#include <optional>

#include "platform/clock.h"
#include "platform/values.h"

namespace kwo::frame {

/// The component's one clock for spans and due times.
class MillisecondClock {
public:
    explicit MillisecondClock(platform::Clock& clock) : mClock(clock) {}

    /// Milliseconds since some fixed moment, with four decimals; never decreases. The high-resolution counter in exact
    /// arithmetic where the platform has one, else the tick count carried on past its wrap.
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
