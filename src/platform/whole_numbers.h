#pragma once

#include <cmath>
#include <cstdint>
#include <limits>

#include "platform/component_error.h"

namespace kwo::platform {

/// The nearest whole number; halves go to the even one, as automation rounds everywhere.
/// `Whole` is a type of at most 32 bits.
/// Raises Overflow if the number does not fit that type, and for a value that is not a number.
template <class Whole>
Whole Rounded(double value) {
    const double nearest = std::nearbyint(value);
    if (!(nearest >= std::numeric_limits<Whole>::min() && nearest <= std::numeric_limits<Whole>::max())) {
        RaiseRuntime(RuntimeError::Overflow);
    }
    return static_cast<Whole>(nearest);
}

/// `value` as a smaller type, unchanged. Raises Overflow if it does not fit.
template <class Whole>
Whole Narrowed(std::int64_t value) {
    if (value != static_cast<Whole>(value)) RaiseRuntime(RuntimeError::Overflow);
    return static_cast<Whole>(value);
}

}  // namespace kwo::platform
