#pragma once

#include <cstdint>
#include <optional>

#include "platform/values.h"

namespace kwo::platform {

/// The system's sources of time, as the system returns them.
/// The first three count time that passes. MillisecondClock makes one clock of them, which never runs backwards. Now
/// and LocalFileTimeToUtc are about the time of day, which the user can change.
class Clock {
public:
    virtual ~Clock() = default;

    /// The counts per second of the high-resolution counter (QueryPerformanceFrequency).
    /// It stays the same until the system restarts, so ask once.
    /// Nothing if the system has no counter. TickCount is then the only source for spans.
    virtual std::optional<std::int64_t> CounterFrequency() = 0;
    /// The high-resolution counter (QueryPerformanceCounter).
    /// Two readings and CounterFrequency give a span.
    /// Call it only if there is a frequency.
    virtual std::int64_t Counter() = 0;
    /// Milliseconds since the system started (GetTickCount).
    /// Windows counts in steps of 10 to 16 ms.
    /// Wraps to 0 after 2^32 milliseconds, some 49.7 days.
    /// The caller detects the wrap.
    virtual std::uint32_t TickCount() = 0;
    /// The local date and time of day, to the millisecond (GetLocalTime).
    /// Jumps when the user or daylight-saving time sets the clock.
    virtual Date Now() = 0;

    /// Converts a local file time to UTC (LocalFileTimeToFileTime).
    /// A file time counts hundreds of nanoseconds since 1601-01-01.
    /// The offset is that of today, also for a date on the other side of a change to or from daylight-saving time.
    /// Returns nothing on failure, for example for a negative `fileTime`; the last-error value says why.
    virtual std::optional<std::int64_t> LocalFileTimeToUtc(std::int64_t fileTime) = 0;
};

}  // namespace kwo::platform
