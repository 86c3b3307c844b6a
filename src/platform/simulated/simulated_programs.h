#pragma once

#include <set>

#include "platform/programs.h"
#include "platform/simulated/world.h"

namespace kwo::platform::simulated {

/// Programs that can be started and windows that can be activated.
class SimulatedPrograms final : public Programs {
public:
    static constexpr std::int32_t kFirstTask = 5001;

    explicit SimulatedPrograms(World& world) : mWorld(world) {}

    void Activate(TextView title) override;
    std::int32_t Start(TextView commandLine, std::int16_t windowMode) override;

    /// Programs by the first word of their command lines.
    std::set<Text> installed;
    /// Titles of the windows that there are.
    std::set<Text> titles;

private:
    World& mWorld;
    std::int32_t mNextTask = kFirstTask;
};

}  // namespace kwo::platform::simulated
