#pragma once

#include <cmath>
#include <cstdint>
#include <limits>

#include "platform/component_error.h"
#include "platform/geometry.h"
#include "platform/screen.h"

namespace kwo::controls {

/// To the nearest whole number, halves to even. Raises Overflow for what the type does not hold.
template <class Whole>
Whole Rounded(double value) {
    const double nearest = std::nearbyint(value);
    if (!(nearest >= std::numeric_limits<Whole>::min() && nearest <= std::numeric_limits<Whole>::max())) {
        platform::RaiseRuntime(platform::RuntimeError::Overflow);
    }
    return static_cast<Whole>(nearest);
}

/// Raises Overflow when 32 bits do not hold the value.
inline std::int32_t Checked(std::int64_t value) {
    if (value != static_cast<std::int32_t>(value)) platform::RaiseRuntime(platform::RuntimeError::Overflow);
    return static_cast<std::int32_t>(value);
}

/// Twips in a pixel, whole numbers: halves are rounded to even. A host counts with the same ones.
struct TwipsPerPixel {
    std::int16_t x = 15;
    std::int16_t y = 15;

    static TwipsPerPixel Of(platform::Screen& screen) {
        // Intended: also where a pixel has a fraction of a twip, as at 168 and 192 dots per inch.
        return {Rounded<std::int16_t>(screen.TwipsPerPixelX()), Rounded<std::int16_t>(screen.TwipsPerPixelY())};
    }

    platform::Point Pixels(float twipsX, float twipsY) const {
        return {Rounded<std::int32_t>(twipsX / static_cast<float>(x)),
                Rounded<std::int32_t>(twipsY / static_cast<float>(y))};
    }
    platform::Rect Twips(const platform::Rect& pixels) const {
        return {Checked(std::int64_t{pixels.left} * x), Checked(std::int64_t{pixels.top} * y),
                Checked(std::int64_t{pixels.right} * x), Checked(std::int64_t{pixels.bottom} * y)};
    }
};

}  // namespace kwo::controls
