#pragma once

#include <cstdint>

namespace kwo::frame {

/// The result of the component's last platform call. The routines that make such calls set it: the registry class its
/// status codes, the event log and the message table a success flag.
struct ApiResult {
    /// As the platform returned it; 0 before the first call.
    std::int32_t last = 0;
};

}  // namespace kwo::frame
