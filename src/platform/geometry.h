#pragma once

#include <cstdint>

namespace kwo::platform {

/// A place in pixels, to the right and down. What it counts from, the box or the screen, is said where it is used.
struct Point {
    std::int32_t x = 0;
    std::int32_t y = 0;

    friend constexpr bool operator==(Point, Point) = default;
};

/// A rectangle in pixels.
/// The right and bottom edges are outside: the width is right minus left. It may be empty or inverted.
struct Rect {
    std::int32_t left = 0;
    std::int32_t top = 0;
    std::int32_t right = 0;
    std::int32_t bottom = 0;

    friend constexpr bool operator==(const Rect&, const Rect&) = default;

    /// Whether the point is inside (PtInRect): the left and top edges are, the right and bottom edges are not.
    /// An empty or inverted rectangle contains no point.
    constexpr bool Contains(Point point) const {
        return point.x >= left && point.x < right && point.y >= top && point.y < bottom;
    }
};

}  // namespace kwo::platform
