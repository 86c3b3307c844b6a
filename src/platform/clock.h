#pragma once

#include <cstdint>
#include <optional>

#include "platform/values.h"

namespace kwo::platform {

/// The system's sources of time, as the system returns them. MillisecondClock makes one clock of the first three.
class Clock {
public:
    virtual ~Clock() = default;

    /// The counts per second of the high-resolution counter (QueryPerformanceFrequency). Nothing if the system has no
    /// counter.
    virtual std::optional<std::int64_t> CounterFrequency() = 0;
    /// The high-resolution counter (QueryPerformanceCounter). Call it only if there is a frequency.
    virtual std::int64_t Counter() = 0;
    /// Milliseconds since the system started (GetTickCount). Wraps to 0 after 2^32 milliseconds, some 49.7 days.
    virtual std::uint32_t TickCount() = 0;
    /// The local date and time of day.
    virtual Date Now() = 0;

    /// Converts a local file time to UTC, with the bias of today (LocalFileTimeToFileTime). A file time counts hundreds
    /// of nanoseconds since 1601-01-01. Returns nothing on failure; the last-error value says why.
    virtual std::optional<std::int64_t> LocalFileTimeToUtc(std::int64_t fileTime) = 0;
};

}  // namespace kwo::platform
