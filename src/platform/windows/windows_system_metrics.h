#pragma once

#include "platform/system_metrics.h"

namespace kwo::platform::windows {

/// GetSystemMetrics. Its source also checks the indexes of metrics.def against the system's constants.
class WindowsSystemMetrics final : public SystemMetrics {
public:
    std::int32_t Metric(std::int32_t index) override;
};

}  // namespace kwo::platform::windows
