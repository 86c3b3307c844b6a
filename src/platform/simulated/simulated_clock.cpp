#include "platform/simulated/simulated_clock.h"

#include <stdexcept>

#include "platform/simulated/error_codes.h"

namespace kwo::platform::simulated {
namespace {

constexpr std::int64_t kScaledPerSecond = 1000 * Milliseconds::kScale;
constexpr double kScaledPerDay = 86'400'000.0 * static_cast<double>(Milliseconds::kScale);

}  // namespace

SimulatedClock::SimulatedClock(World& world) : mWorld(world) {
    world.faults.Declare({{"QueryPerformanceFrequency", {50}}, {"LocalFileTimeToFileTime", {87}}});
}

std::optional<std::int64_t> SimulatedClock::CounterFrequency() {
    const Call call(mWorld, "QueryPerformanceFrequency");
    if (call.Fails()) return std::nullopt;
    return mFrequency;
}

std::int64_t SimulatedClock::Counter() {
    if (!mFrequency) return 0;
    const std::int64_t seconds = mElapsed.scaled / kScaledPerSecond;
    const std::int64_t rest = mElapsed.scaled % kScaledPerSecond;
    return seconds * *mFrequency + rest * *mFrequency / kScaledPerSecond;
}

std::uint32_t SimulatedClock::TickCount() {
    const std::int64_t now = mElapsed.scaled / Milliseconds::kScale;
    Advance(msPerReading);
    return mTicksAtStart + static_cast<std::uint32_t>(now);
}

Date SimulatedClock::Now() {
    return {mSetTo.days + static_cast<double>(mElapsed.scaled - mSetAt.scaled) / kScaledPerDay};
}

std::optional<std::int64_t> SimulatedClock::LocalFileTimeToUtc(std::int64_t fileTime) {
    const Call call(mWorld, "LocalFileTimeToFileTime");
    constexpr std::int64_t kPerMinute = 60 * kScaledPerSecond;
    if (call.Fails()) return std::nullopt;
    if (fileTime < 0) {
        mWorld.lastError = kInvalidParameter;
        return std::nullopt;
    }
    return fileTime + biasMinutes * kPerMinute;
}

void SimulatedClock::Advance(Milliseconds span) {
    if (span.scaled < 0) throw std::invalid_argument("time does not run backwards");
    mElapsed.scaled += span.scaled;
}

void SimulatedClock::SetTickCount(std::uint32_t ticks) {
    mTicksAtStart = ticks - static_cast<std::uint32_t>(mElapsed.scaled / Milliseconds::kScale);
}

void SimulatedClock::SetNow(Date now) {
    mSetTo = now;
    mSetAt = mElapsed;
}

}  // namespace kwo::platform::simulated
