#pragma once

#include <cstdint>

namespace kwo::platform {

/// Sizes and settings of the desktop. platform/metrics.def lists those that the component publishes.
class SystemMetrics {
public:
    virtual ~SystemMetrics() = default;

    /// The system's value for an index (GetSystemMetrics).
    /// A size is in pixels, a flag is 0 or another number.
    /// 0 for an index that the system does not know. A failure cannot be told from a value of 0.
    virtual std::int32_t Metric(std::int32_t index) = 0;
};

}  // namespace kwo::platform
