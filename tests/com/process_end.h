#pragma once

namespace kwo::com_test {

/// What a second instance of this program does: it ends while it holds a timer that is armed and has a sink. Its exit
/// code is 0 when the DLL then leaves everything as it is.
int EndWithAnArmedTimer();

inline constexpr char kEndWithAnArmedTimer[] = "--end-with-an-armed-timer";

}  // namespace kwo::com_test
