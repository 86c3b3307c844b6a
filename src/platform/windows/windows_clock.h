#pragma once

#include "platform/clock.h"
#include "platform/windows/context.h"

namespace kwo::platform::windows {

/// The clocks of Windows. Now has the milliseconds of GetLocalTime. Only LocalFileTimeToUtc changes the last-error
/// value.
class WindowsClock final : public Clock {
public:
    explicit WindowsClock(Context& context) : mLastError(context.lastError) {}

    std::optional<std::int64_t> CounterFrequency() override;
    std::int64_t Counter() override;
    std::uint32_t TickCount() override;
    Date Now() override;
    std::optional<std::int64_t> LocalFileTimeToUtc(std::int64_t fileTime) override;

private:
    LastError& mLastError;
};

}  // namespace kwo::platform::windows
