#pragma once

#include "platform/platform.h"

namespace kwo::timers {

/// The services with another clock and other timers.
inline platform::Platform WithTime(const platform::Platform& from, platform::Clock& clock,
                                   platform::TimerService& timers) {
    struct Doubled : platform::Platform {
        platform::Clock& clock;
        platform::TimerService& timers;
    };
    Doubled doubled{from, clock, timers};
    return ServicesOf(doubled);
}

}  // namespace kwo::timers
