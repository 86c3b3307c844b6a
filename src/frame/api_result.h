#pragma once

#include <cstdint>

namespace kwo::frame {

/// The result of the component's last platform call.
/// One for each component; it belongs to Component.
/// The routines that make such calls set it: the registry class its status codes, the event log and the message table
/// a success flag. Reading it changes nothing.
struct ApiResult {
    /// As the platform returned it; 0 before the first call.
    /// Which numbers mean success depends on the call: 0 for a status, anything but 0 for a flag.
    std::int32_t last = 0;
};

}  // namespace kwo::frame
