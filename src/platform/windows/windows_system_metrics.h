#pragma once

#include "platform/system_metrics.h"

namespace kwo::platform::windows {

/// GetSystemMetrics.
/// Its source also checks the indexes of metrics.def against the system's constants, when it is compiled.
class WindowsSystemMetrics final : public SystemMetrics {
public:
    /// In pixels as the system tells this program: scaled for a program that does not know about scaling.
    std::int32_t Metric(std::int32_t index) override;
};

}  // namespace kwo::platform::windows
