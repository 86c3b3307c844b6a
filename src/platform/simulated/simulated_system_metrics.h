#pragma once

#include <map>

#include "platform/system_metrics.h"

namespace kwo::platform::simulated {

/// What a test has set, 0 for everything else.
class SimulatedSystemMetrics final : public SystemMetrics {
public:
    std::int32_t Metric(std::int32_t index) override {
        const auto found = values.find(index);
        return found == values.end() ? 0 : found->second;
    }

    std::map<std::int32_t, std::int32_t> values;
};

}  // namespace kwo::platform::simulated
