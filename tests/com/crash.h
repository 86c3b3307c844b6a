#pragma once

namespace kwo::com_test {

/// What a second instance of this program does: it writes through a null pointer, so that the report of a crash can be
/// looked at. It does not return.
[[noreturn]] void Crash();

/// The same, but the component's DLL writes there, because it is given such a pointer.
[[noreturn]] void CrashInTheDll();

/// The same, but it writes behind a block of memory and gives that back, so that a check of the heap can be looked at.
[[noreturn]] void OverrunHeap();

/// The same, but it writes behind an array on the stack. The compiler's protection must end the process.
void OverrunStack();

inline constexpr char kCrash[] = "--crash";
inline constexpr char kCrashInTheDll[] = "--crash-in-the-dll";
inline constexpr char kOverrun[] = "--overrun";
inline constexpr char kOverrunStack[] = "--overrun-stack";

}  // namespace kwo::com_test
