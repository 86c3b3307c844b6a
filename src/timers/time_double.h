#pragma once

#include "platform/platform.h"

namespace kwo::timers {

/// The services of `from` with another clock and other timers, for tests that let time behave as no desktop does.
/// `clock` and `timers` must outlive the result.
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
