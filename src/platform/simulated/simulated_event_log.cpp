#include "platform/simulated/simulated_event_log.h"

#include <string>

#include "platform/simulated/text_codec.h"

namespace kwo::platform::simulated {
namespace {

constexpr std::int32_t kInvalidHandle = 6;
constexpr std::int32_t kInvalidParameter = 87;

}  // namespace

SimulatedEventLog::SimulatedEventLog(World& world) : mWorld(world) {
    world.faults.Declare({"RegisterEventSource", "ReportEvent", "DeregisterEventSource"});
}

EventLog::Source SimulatedEventLog::Open(TextView sourceName) {
    const Text name = ThroughAnsi(sourceName);
    mWorld.log.Add("RegisterEventSource " + Shown(TextView(name)));
    if (mWorld.Fails("RegisterEventSource")) return 0;
    if (name.empty()) {
        mWorld.lastError = kInvalidParameter;
        return 0;
    }
    mSources[mNext] = name;
    return mNext++;
}

bool SimulatedEventLog::Report(Source source, std::uint16_t type, std::uint32_t eventId, TextView text) {
    const TextView reported = UpToZero(text);
    mWorld.log.Add("ReportEvent type=" + std::to_string(type) + " id=" + std::to_string(eventId) + " " +
                   Shown(reported));
    if (mWorld.Fails("ReportEvent")) return false;
    const auto found = mSources.find(source);
    if (found == mSources.end()) {
        mWorld.lastError = kInvalidHandle;
        return false;
    }
    entries.push_back({found->second, type, eventId, Text(reported)});
    return true;
}

void SimulatedEventLog::Close(Source source) {
    mWorld.log.Add("DeregisterEventSource");
    if (mWorld.Fails("DeregisterEventSource")) return;
    if (mSources.erase(source) == 0) mWorld.lastError = kInvalidHandle;
}

}  // namespace kwo::platform::simulated
