#pragma once

#include <set>

#include "platform/process_memory.h"
#include "platform/simulated/world.h"

namespace kwo::platform::simulated {

/// The memory of the host's process; there is no other process.
/// Calls that can fail: OpenProcess and GetProcessMemoryInfo. The log shows `OpenProcess access=0x400 inherit=0
/// id=1234` and `CloseProcess`.
class SimulatedProcessMemory final : public ProcessMemory {
public:
    explicit SimulatedProcessMemory(World& world);

    Handle Open(std::uint32_t access, bool inherit, std::uint32_t processId) override;
    std::optional<Counters> Query(Handle process) override;
    void Close(Handle process) override;

    /// What Query answers for the process.
    Counters counters{120, 5'000'000, 60'000, 8'000, 2'000'000};
    /// How many handles are open now; 0 when nothing leaks.
    std::size_t OpenHandles() const { return mOpen.size(); }

private:
    World& mWorld;
    SimulatedHostApplication& mHost;
    std::set<Handle> mOpen;
    Handle mNext = 0x100;
};

}  // namespace kwo::platform::simulated
