#pragma once

#include <string>

namespace kwohost {

/// If a script calls itself without end and uses up the stack of the calling thread, writes `report` to standard error
/// and ends the process with `exitCode`.
/// An engine with a limit of its own raises its own error first.
/// Nothing is released: there is no stack left to run code on.
/// Call it once, before the script runs.
void GuardStack(std::wstring report, int exitCode);

}  // namespace kwohost
