#pragma once

#include <cstdint>

#include "platform/values.h"

namespace kwo::frame {

/// The nearest whole number; halves go to the even neighbour, as automation rounds everywhere.
/// Works for every value, negative ones too: -2.5 gives -2.
constexpr std::int64_t RoundHalfEven(platform::Currency value) {
    constexpr std::int64_t kScale = platform::Currency::kScale;
    const std::int64_t whole = value.scaled / kScale;
    const std::int64_t rest = value.scaled % kScale;
    const std::int64_t distance = rest < 0 ? -rest : rest;
    if (distance < kScale / 2 || (distance == kScale / 2 && whole % 2 == 0)) return whole;
    return rest < 0 ? whole - 1 : whole + 1;
}

}  // namespace kwo::frame
