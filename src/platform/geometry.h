#pragma once

#include <cstdint>

namespace kwo::platform {

/// A point in pixels.
struct Point {
    std::int32_t x = 0;
    std::int32_t y = 0;

    friend constexpr bool operator==(Point, Point) = default;
};

/// A rectangle in pixels. The right and bottom edges are outside. It may be empty or inverted.
struct Rect {
    std::int32_t left = 0;
    std::int32_t top = 0;
    std::int32_t right = 0;
    std::int32_t bottom = 0;

    friend constexpr bool operator==(const Rect&, const Rect&) = default;

    /// Whether the point is inside (PtInRect). An empty or inverted rectangle contains no point.
    constexpr bool Contains(Point point) const {
        return point.x >= left && point.x < right && point.y >= top && point.y < bottom;
    }
};

}  // namespace kwo::platform
