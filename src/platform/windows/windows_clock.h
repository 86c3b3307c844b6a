#pragma once

#include "platform/clock.h"
#include "platform/windows/context.h"

namespace kwo::platform::windows {

/// The clocks of Windows: QueryPerformanceCounter, GetTickCount and GetLocalTime.
/// Now has the milliseconds of GetLocalTime, which the system's conversion of dates would drop. Only
/// LocalFileTimeToUtc changes the last-error value.
class WindowsClock final : public Clock {
public:
    explicit WindowsClock(Context& context) : mLastError(context.lastError) {}

    std::optional<std::int64_t> CounterFrequency() override;
    std::int64_t Counter() override;
    std::uint32_t TickCount() override;
    /// GetLocalTime. SystemTimeToVariantTime handles whole seconds only, so the milliseconds are added afterwards.
    Date Now() override;
    std::optional<std::int64_t> LocalFileTimeToUtc(std::int64_t fileTime) override;

private:
    LastError& mLastError;
};

}  // namespace kwo::platform::windows
