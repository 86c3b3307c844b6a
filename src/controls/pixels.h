#pragma once

#include <cmath>
#include <cstdint>
#include <limits>

#include "platform/component_error.h"
#include "platform/geometry.h"
#include "platform/screen.h"

namespace kwo::controls {

/// The nearest whole number; halves go to the even one. Raises Overflow if it does not fit the type.
template <class Whole>
Whole Rounded(double value) {
    const double nearest = std::nearbyint(value);
    if (!(nearest >= std::numeric_limits<Whole>::min() && nearest <= std::numeric_limits<Whole>::max())) {
        platform::RaiseRuntime(platform::RuntimeError::Overflow);
    }
    return static_cast<Whole>(nearest);
}

/// `value` as 32 bits. Raises Overflow if it does not fit.
inline std::int32_t Checked(std::int64_t value) {
    if (value != static_cast<std::int32_t>(value)) platform::RaiseRuntime(platform::RuntimeError::Overflow);
    return static_cast<std::int32_t>(value);
}

/// The twips in a pixel, as whole numbers. The host must count with the same numbers.
struct TwipsPerPixel {
    std::int16_t x = 15;
    std::int16_t y = 15;

    /// The factors of the display, rounded, halves to even.
    static TwipsPerPixel Of(platform::Screen& screen) {
        // Intended: also where a pixel has a fraction of a twip, as at 168 and 192 dots per inch.
        return {Rounded<std::int16_t>(screen.TwipsPerPixelX()), Rounded<std::int16_t>(screen.TwipsPerPixelY())};
    }

    /// A place in twips as a place in pixels, rounded, halves to even. Raises Overflow.
    platform::Point Pixels(float twipsX, float twipsY) const {
        return {Rounded<std::int32_t>(twipsX / static_cast<float>(x)),
                Rounded<std::int32_t>(twipsY / static_cast<float>(y))};
    }
    /// A rectangle in pixels as one in twips. Raises Overflow.
    platform::Rect Twips(const platform::Rect& pixels) const {
        return {Checked(std::int64_t{pixels.left} * x), Checked(std::int64_t{pixels.top} * y),
                Checked(std::int64_t{pixels.right} * x), Checked(std::int64_t{pixels.bottom} * y)};
    }
};

}  // namespace kwo::controls
