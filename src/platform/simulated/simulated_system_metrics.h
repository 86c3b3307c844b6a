#pragma once

#include <map>

#include "platform/simulated/world.h"
#include "platform/system_metrics.h"

namespace kwo::platform::simulated {

/// What a test has set, 0 for everything else. GetSystemMetrics can fail: it then returns 0.
class SimulatedSystemMetrics final : public SystemMetrics {
public:
    explicit SimulatedSystemMetrics(World& world) : mWorld(world) { world.faults.Declare({{"GetSystemMetrics", {1}}}); }

    std::int32_t Metric(std::int32_t index) override {
        const Call call(mWorld, "GetSystemMetrics");
        if (call.Fails()) return 0;
        const auto found = values.find(index);
        return found == values.end() ? 0 : found->second;
    }

    /// By the system's index (SM_).
    std::map<std::int32_t, std::int32_t> values;

private:
    World& mWorld;
};

}  // namespace kwo::platform::simulated
