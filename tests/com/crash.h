#pragma once

namespace kwo::com_test {

/// What a second instance of this program does: it writes through a null pointer, so that the report of a crash can be
/// looked at. It does not return.
[[noreturn]] void Crash();

inline constexpr char kCrash[] = "--crash";

}  // namespace kwo::com_test
