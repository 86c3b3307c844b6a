#pragma once

#include <compare>
#include <cstdint>

namespace kwo::platform {

/// The automation currency type: a 64-bit count of ten-thousandths.
struct Currency {
    static constexpr std::int64_t kScale = 10'000;

    std::int64_t scaled = 0;

    /// `whole` units. `whole` times kScale must fit 64 bits.
    static constexpr Currency Whole(std::int64_t whole) { return {whole * kScale}; }
    /// The value as a number; large values lose their last digits.
    constexpr double AsDouble() const { return static_cast<double>(scaled) / static_cast<double>(kScale); }

    friend constexpr auto operator<=>(Currency, Currency) = default;
};

/// A moment or a span on the millisecond clock: milliseconds with four decimals.
using Milliseconds = Currency;

/// An automation date: days since 1899-12-30; the fraction is the time of day. It may be any number, also one outside
/// the calendar.
struct Date {
    double days = 0;

    friend constexpr auto operator<=>(Date, Date) = default;
};

/// An automation colour: red, green and blue in the low 24 bits, or 0x80000000 + n for the system colour n.
using Colour = std::uint32_t;

/// A handle of the system as it crosses an automation interface: 32 bits on both bitnesses, sign-extended where the
/// system wants a pointer. 0 is no handle.
using Handle = std::int32_t;

}  // namespace kwo::platform
