#pragma once

#include <compare>
#include <cstdint>

namespace kwo::platform {

/// The automation currency type: a 64-bit count of ten-thousandths.
/// It adds and compares exactly, where floating point would drift.
struct Currency {
    static constexpr std::int64_t kScale = 10'000;

    /// Ten-thousandths of a unit: 15'000 is 1.5.
    std::int64_t scaled = 0;

    /// `whole` units. `whole` times kScale must fit 64 bits; there is no check.
    static constexpr Currency Whole(std::int64_t whole) { return {whole * kScale}; }
    /// The value as a number. Beyond some 900 billion units, it loses its last decimals.
    constexpr double AsDouble() const { return static_cast<double>(scaled) / static_cast<double>(kScale); }

    friend constexpr auto operator<=>(Currency, Currency) = default;
};

/// A moment or a span on the millisecond clock: milliseconds with four decimals.
/// A moment counts from an arbitrary start, so only differences mean something.
using Milliseconds = Currency;

/// An automation date: days since 1899-12-30; the fraction is the time of day.
/// Before day 0 the fraction still counts forward from midnight: -1.25 is 1899-12-29 06:00.
/// It may be any number, also one outside the calendar (the years 100 to 9999) or not a number. Conversions check.
struct Date {
    double days = 0;

    friend constexpr auto operator<=>(Date, Date) = default;
};

/// An automation colour: red, green and blue in the low 24 bits, red lowest; or 0x80000000 + n for the system colour
/// n, which changes with the user's settings.
using Colour = std::uint32_t;

/// A handle of the system as it crosses an automation interface: 32 bits on both bitnesses, sign-extended where the
/// system wants a pointer.
/// 0 is no handle.
using Handle = std::int32_t;

}  // namespace kwo::platform
