#pragma once

#include <cstdint>

namespace kwo::frame {

/// What the last platform call of the component returned, where a routine keeps it for whoever looks next.
struct ApiResult {
    std::int32_t last = 0;
};

}  // namespace kwo::frame
