#include "platform/windows/windows_clock.h"

#include <windows.h>
#include <oleauto.h>

namespace kwo::platform::windows {

std::optional<std::int64_t> WindowsClock::CounterFrequency() {
    LARGE_INTEGER frequency;
    if (!::QueryPerformanceFrequency(&frequency)) return std::nullopt;
    return frequency.QuadPart;
}

std::int64_t WindowsClock::Counter() {
    LARGE_INTEGER count;
    ::QueryPerformanceCounter(&count);
    return count.QuadPart;
}

std::uint32_t WindowsClock::TickCount() {
    return ::GetTickCount();
}

Date WindowsClock::Now() {
    constexpr double kMillisecondsPerDay = 86'400'000;
    SYSTEMTIME now;
    ::GetLocalTime(&now);
    const double milliseconds = now.wMilliseconds;
    // The conversion handles whole seconds only.
    now.wMilliseconds = 0;
    Date date;
    ::SystemTimeToVariantTime(&now, &date.days);
    date.days += milliseconds / kMillisecondsPerDay;
    return date;
}

std::optional<std::int64_t> WindowsClock::LocalFileTimeToUtc(std::int64_t fileTime) {
    ULARGE_INTEGER local;
    local.QuadPart = static_cast<ULONGLONG>(fileTime);
    const FILETIME given = {local.LowPart, local.HighPart};
    FILETIME converted;
    if (!mLastError.After(::LocalFileTimeToFileTime(&given, &converted))) return std::nullopt;
    ULARGE_INTEGER utc;
    utc.LowPart = converted.dwLowDateTime;
    utc.HighPart = converted.dwHighDateTime;
    return static_cast<std::int64_t>(utc.QuadPart);
}

}  // namespace kwo::platform::windows
