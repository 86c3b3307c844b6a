#include "platform/simulated/virtual_clock.h"

#include <stdexcept>

namespace kwo::platform::simulated {
namespace {

constexpr std::int64_t kScaledPerSecond = 1000 * Milliseconds::kScale;
constexpr double kScaledPerDay = 86'400'000.0 * static_cast<double>(Milliseconds::kScale);

}  // namespace

VirtualClock::VirtualClock(World& world) : mWorld(world) {
    world.faults.Declare({"QueryPerformanceFrequency", "LocalFileTimeToFileTime"});
}

std::optional<std::int64_t> VirtualClock::CounterFrequency() {
    if (mWorld.Fails("QueryPerformanceFrequency")) return std::nullopt;
    return mFrequency;
}

std::int64_t VirtualClock::Counter() {
    if (!mFrequency) return 0;
    const std::int64_t seconds = mElapsed.scaled / kScaledPerSecond;
    const std::int64_t rest = mElapsed.scaled % kScaledPerSecond;
    return seconds * *mFrequency + rest * *mFrequency / kScaledPerSecond;
}

std::uint32_t VirtualClock::TickCount() {
    const std::int64_t now = mElapsed.scaled / Milliseconds::kScale;
    Advance(msPerReading);
    return mTicksAtStart + static_cast<std::uint32_t>(now);
}

Date VirtualClock::Now() {
    return {mSetTo.days + static_cast<double>(mElapsed.scaled - mSetAt.scaled) / kScaledPerDay};
}

std::optional<std::int64_t> VirtualClock::LocalFileTimeToUtc(std::int64_t fileTime) {
    constexpr std::int64_t kPerMinute = 60 * kScaledPerSecond;
    constexpr std::int32_t kInvalidParameter = 87;
    if (mWorld.Fails("LocalFileTimeToFileTime")) return std::nullopt;
    if (fileTime < 0) {
        mWorld.lastError = kInvalidParameter;
        return std::nullopt;
    }
    return fileTime + biasMinutes * kPerMinute;
}

void VirtualClock::Advance(Milliseconds span) {
    if (span.scaled < 0) throw std::invalid_argument("time does not run backwards");
    mElapsed.scaled += span.scaled;
}

void VirtualClock::SetTickCount(std::uint32_t ticks) {
    mTicksAtStart = ticks - static_cast<std::uint32_t>(mElapsed.scaled / Milliseconds::kScale);
}

void VirtualClock::SetNow(Date now) {
    mSetTo = now;
    mSetAt = mElapsed;
}

}  // namespace kwo::platform::simulated
