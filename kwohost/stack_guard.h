#pragma once

#include <string>

namespace kwohost {

/// If a script calls itself without end and uses up the stack of the calling thread, writes `report` to standard error
/// and ends the process with `exitCode`. An engine with a limit of its own raises its own error first.
void GuardStack(std::wstring report, int exitCode);

}  // namespace kwohost
