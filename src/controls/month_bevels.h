#pragma once

#include <cstdint>

namespace kwo::controls {

/// The edge of an element of the calendar.
struct Bevel {
    std::uint32_t edge = 0;
    std::uint32_t flags = 0;
    std::uint32_t selectedFlags = 0;  ///< of a selected day

    /// 1 raised, 2 sunken, 3 etched, anything else a bump, which reads 0.
    static constexpr Bevel Of(std::int16_t number) {
        constexpr std::uint32_t kRectangle = 0x000F;
        constexpr std::uint32_t kMiddle = 0x0800;
        constexpr std::uint32_t kSoft = 0x1000;
        constexpr std::uint32_t kFlat = 0x4000;
        constexpr std::uint32_t kFilled = kRectangle + kMiddle;
        switch (number) {
            case 1:
                return {kRaised, kFilled + kSoft, kFilled + kFlat};
            case 2:
                return {kSunken, kFilled + kSoft, kFilled};
            case 3:
                return {kEtched, kFilled, kFilled};
            default:
                return {kBump, kFilled + kFlat, kFilled};
        }
    }
    constexpr std::int16_t Number() const {
        switch (edge) {
            case kRaised:
                return 1;
            case kSunken:
                return 2;
            case kEtched:
                return 3;
            default:
                return 0;
        }
    }

    static constexpr std::uint32_t kRaised = 5;
    static constexpr std::uint32_t kEtched = 6;
    static constexpr std::uint32_t kBump = 9;
    static constexpr std::uint32_t kSunken = 10;
};

}  // namespace kwo::controls
