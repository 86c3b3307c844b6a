#pragma once

#include <compare>
#include <cstdint>

namespace kwo::platform {

/// The automation currency type: a 64-bit count of ten-thousandths.
struct Currency {
    static constexpr std::int64_t kScale = 10'000;

    std::int64_t scaled = 0;

    /// `whole` units; the caller keeps it within what 64 bits hold after scaling.
    static constexpr Currency Whole(std::int64_t whole) { return {whole * kScale}; }
    constexpr double AsDouble() const { return static_cast<double>(scaled) / static_cast<double>(kScale); }

    friend constexpr auto operator<=>(Currency, Currency) = default;
};

/// A point or span on the millisecond clock, with four decimals.
using Milliseconds = Currency;

/// An automation date: days since 1899-12-30, the fraction is the time of day.
struct Date {
    double days = 0;

    friend constexpr auto operator<=>(Date, Date) = default;
};

/// An automation colour: 0x80000000 + n names system colour n.
using Colour = std::uint32_t;

/// A handle of the platform as it crosses an automation interface: 32 bits on both bitnesses, sign-extended to the
/// size of a pointer where the platform wants one. 0 is no handle.
using Handle = std::int32_t;

}  // namespace kwo::platform
