#include "platform/simulated/simulated_event_log.h"

#include <string>

#include "platform/simulated/error_codes.h"
#include "platform/simulated/text_codec.h"

namespace kwo::platform::simulated {
SimulatedEventLog::SimulatedEventLog(World& world) : mWorld(world) {
    world.faults.Declare({{"RegisterEventSource", {5, Faults::kNoMemory}},
                          {"ReportEvent", {1502, Faults::kNoMemory}},
                          {"DeregisterEventSource", {6}}});
}

EventLog::Source SimulatedEventLog::Open(TextView sourceName) {
    const Call call(mWorld, "RegisterEventSource");
    const Text name = ThroughAnsi(sourceName);
    mWorld.log.Add("RegisterEventSource " + Shown(TextView(name)));
    if (call.Fails()) return 0;
    if (name.empty()) {
        mWorld.lastError = kInvalidParameter;
        return 0;
    }
    mSources[mNext] = name;
    return mNext++;
}

bool SimulatedEventLog::Report(Source source, std::uint16_t type, std::uint32_t eventId, TextView text) {
    const Call call(mWorld, "ReportEvent");
    const TextView reported = UpToZero(text);
    mWorld.log.Add("ReportEvent type=" + std::to_string(type) + " id=" + std::to_string(eventId) + " " +
                   Shown(reported));
    if (call.Fails()) return false;
    const auto found = mSources.find(source);
    if (found == mSources.end()) {
        mWorld.lastError = kInvalidHandle;
        return false;
    }
    entries.push_back({found->second, type, eventId, Text(reported)});
    return true;
}

void SimulatedEventLog::Close(Source source) {
    const Call call(mWorld, "DeregisterEventSource");
    mWorld.log.Add("DeregisterEventSource");
    if (call.Fails()) return;
    if (mSources.erase(source) == 0) mWorld.lastError = kInvalidHandle;
}

}  // namespace kwo::platform::simulated
