#pragma once

#include <vector>

#include "platform/debug_output.h"
#include "platform/simulated/world.h"

namespace kwo::platform::simulated {

/// A debugger that keeps the lines it is shown. OutputDebugString fails for lack of memory alone.
class SimulatedDebugOutput final : public DebugOutput {
public:
    explicit SimulatedDebugOutput(World& world) : mWorld(world) {
        world.faults.Declare({{"OutputDebugString", {Faults::kNoMemory}}});
    }

    void Write(TextView line) override {
        const Call call(mWorld, "OutputDebugString");
        lines.push_back(ThroughAnsi(line));
    }

    /// As an ANSI call takes them: up to a zero.
    std::vector<Text> lines;

private:
    World& mWorld;
};

}  // namespace kwo::platform::simulated
