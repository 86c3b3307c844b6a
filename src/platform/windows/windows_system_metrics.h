#pragma once

#include "platform/system_metrics.h"

namespace kwo::platform::windows {

class WindowsSystemMetrics final : public SystemMetrics {
public:
    std::int32_t Metric(std::int32_t index) override;
};

}  // namespace kwo::platform::windows
