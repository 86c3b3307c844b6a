#pragma once

#include <cstdint>

#include "platform/drawing.h"

namespace kwo::controls {

/// The edge of an element of the calendar, as the arguments of Drawing::DrawEdge. A value: compare edges by Number.
struct Bevel {
    /// One of the edges that Drawing names.
    std::uint32_t edge = 0;
    /// The system's BF_ numbers for an element that is not selected.
    std::uint32_t flags = 0;
    /// The flags for a selected day. Its edge is sunken, whatever `edge` says.
    std::uint32_t selectedFlags = 0;

    /// The edge for a number of the public properties: 1 raised, 2 sunken, 3 etched, any other a bump.
    /// The middle is always filled.
    static constexpr Bevel Of(std::int16_t number) {
        constexpr std::uint32_t kRectangle = 0x000F;
        constexpr std::uint32_t kMiddle = 0x0800;
        constexpr std::uint32_t kSoft = 0x1000;
        constexpr std::uint32_t kFlat = 0x4000;
        constexpr std::uint32_t kFilled = kRectangle + kMiddle;
        switch (number) {
            case 1:
                return {platform::Drawing::kEdgeRaised, kFilled + kSoft, kFilled + kFlat};
            case 2:
                return {platform::Drawing::kEdgeSunken, kFilled + kSoft, kFilled};
            case 3:
                return {platform::Drawing::kEdgeEtched, kFilled, kFilled};
            default:
                return {platform::Drawing::kEdgeBump, kFilled + kFlat, kFilled};
        }
    }
    /// The number of this edge; 0 for a bump.
    constexpr std::int16_t Number() const {
        switch (edge) {
            case platform::Drawing::kEdgeRaised:
                return 1;
            case platform::Drawing::kEdgeSunken:
                return 2;
            case platform::Drawing::kEdgeEtched:
                return 3;
            default:
                return 0;
        }
    }
};

}  // namespace kwo::controls
