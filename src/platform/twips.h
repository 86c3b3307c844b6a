#pragma once

#include <concepts>
#include <cstdint>

#include "platform/geometry.h"
#include "platform/screen.h"
#include "platform/whole_numbers.h"

namespace kwo::platform {

/// The twips in a pixel, as whole numbers.
/// The host must count with the same numbers.
///
/// Forms, picture boxes and mouse events count in twips, drawing in pixels. An object reads the factors once, when it
/// is created, so it does not notice a later change of the display.
struct TwipsPerPixel {
    /// Along a line; 15 until Of tells.
    std::int16_t x = 15;
    /// Down the screen. Most displays have the same number in both directions.
    std::int16_t y = 15;

    /// The factors of the display, rounded, halves to even: 15 at 96 dots per inch, 8 at 192.
    static TwipsPerPixel Of(Screen& screen) {
        // Intended: also where a pixel has a fraction of a twip, as at 168 and 192 dots per inch.
        return {Rounded<std::int16_t>(screen.TwipsPerPixelX()), Rounded<std::int16_t>(screen.TwipsPerPixelY())};
    }

    /// A place in twips as a place in pixels, divided in the precision of `Number` and rounded, halves to even.
    /// Raises Overflow if a pixel does not fit 32 bits, or for a value that is not a number.
    template <std::floating_point Number>
    Point Pixels(Number twipsX, Number twipsY) const {
        return {Rounded<std::int32_t>(twipsX / static_cast<Number>(x)),
                Rounded<std::int32_t>(twipsY / static_cast<Number>(y))};
    }
    /// A rectangle in pixels as one in twips, exactly. Raises Overflow if an edge does not fit 32 bits.
    Rect Twips(const Rect& pixels) const {
        return {Narrowed<std::int32_t>(std::int64_t{pixels.left} * x),
                Narrowed<std::int32_t>(std::int64_t{pixels.top} * y),
                Narrowed<std::int32_t>(std::int64_t{pixels.right} * x),
                Narrowed<std::int32_t>(std::int64_t{pixels.bottom} * y)};
    }
};

}  // namespace kwo::platform
