#pragma once

#include <cstdint>
#include <optional>

#include "platform/values.h"

namespace kwo::platform {

/// The platform's sources of time, as it gives them.
class Clock {
public:
    virtual ~Clock() = default;

    /// Counts per second of the high-resolution counter; nothing when the platform has none
    /// (QueryPerformanceFrequency).
    virtual std::optional<std::int64_t> CounterFrequency() = 0;
    virtual std::int64_t Counter() = 0;
    /// Milliseconds since the system started; wraps at 2^32 (GetTickCount).
    virtual std::uint32_t TickCount() = 0;
    /// The local date and time of day.
    virtual Date Now() = 0;

    /// LocalFileTimeToFileTime: hundreds of nanoseconds since 1601-01-01, local time to UTC with the bias of today.
    /// Nothing on failure, the last-error value says why.
    virtual std::optional<std::int64_t> LocalFileTimeToUtc(std::int64_t fileTime) = 0;
};

}  // namespace kwo::platform
