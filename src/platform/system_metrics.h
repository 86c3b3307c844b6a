#pragma once

#include <cstdint>

namespace kwo::platform {

/// Sizes and settings of the desktop.
class SystemMetrics {
public:
    virtual ~SystemMetrics() = default;

    /// The system's value for an index (GetSystemMetrics), in pixels if it is a size. 0 for an index that the system
    /// does not know.
    virtual std::int32_t Metric(std::int32_t index) = 0;
};

}  // namespace kwo::platform
