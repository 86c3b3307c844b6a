#pragma once

#include <set>
#include <vector>

#include "platform/programs.h"
#include "platform/simulated/world.h"

namespace kwo::platform::simulated {

/// Programs that can be started, and the desktop's windows, which can be activated.
/// The log shows `Activate "Title"` and `Start "command line" 1`. EnumWindows and CreateProcess can fail: the calls
/// then raise as for a window or program that is not there.
class SimulatedPrograms final : public Programs {
public:
    /// The identifier of the first program that is started. The next ones count up.
    static constexpr std::int32_t kFirstTask = 5001;

    explicit SimulatedPrograms(World& world) : mWorld(world), mWindows(world.services.windows) {
        world.faults.Declare(
            {{"EnumWindows", {5, Faults::kNoMemory}}, {"CreateProcess", {2, 5, 740, Faults::kNoMemory}}});
    }

    void Activate(TextView title) override;
    std::int32_t Start(TextView commandLine, std::int16_t windowMode) override;

    /// The full names of the programs that there are.
    std::set<Text> installed;
    /// Those that were started, in their order.
    std::vector<Text> started;

private:
    /// The quoted name at the start; without quotation marks the first program that there is up to some blank, with
    /// `.exe` behind it where that is missing.
    /// Empty when there is none.
    Text ProgramOf(TextView commandLine) const;

    World& mWorld;
    SimulatedWindowService& mWindows;
    std::int32_t mNextTask = kFirstTask;
};

}  // namespace kwo::platform::simulated
