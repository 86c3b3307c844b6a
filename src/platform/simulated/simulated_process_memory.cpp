#include "platform/simulated/simulated_process_memory.h"

#include <string>

#include "platform/simulated/error_codes.h"
#include "platform/simulated/simulated_host_application.h"

namespace kwo::platform::simulated {
SimulatedProcessMemory::SimulatedProcessMemory(World& world) : mWorld(world), mHost(world.services.host) {
    world.faults.Declare({{"OpenProcess", {5}}, {"GetProcessMemoryInfo", {5}}, {"CloseHandle", {}}});
}

Handle SimulatedProcessMemory::Open(std::uint32_t access, bool inherit, std::uint32_t processId) {
    const Call call(mWorld, "OpenProcess");
    mWorld.log.Add("OpenProcess access=" + Hex(access) + " inherit=" + (inherit ? "1" : "0") +
                   " id=" + std::to_string(processId));
    if (call.Fails()) return 0;
    if (processId != mHost.processId) {
        mWorld.lastError = kInvalidParameter;
        return 0;
    }
    mOpen.insert(mNext);
    return mNext++;
}

std::optional<ProcessMemory::Counters> SimulatedProcessMemory::Query(Handle process) {
    const Call call(mWorld, "GetProcessMemoryInfo");
    if (call.Fails()) return std::nullopt;
    if (mOpen.contains(process)) return counters;
    mWorld.lastError = kInvalidHandle;
    return std::nullopt;
}

void SimulatedProcessMemory::Close(Handle process) {
    const Call call(mWorld, "CloseHandle");
    mWorld.log.Add("CloseProcess");
    if (mOpen.erase(process) == 0) mWorld.lastError = kInvalidHandle;
}

}  // namespace kwo::platform::simulated
