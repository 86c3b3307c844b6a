#pragma once

#include <string>

namespace kwohost {

/// Turns the end of the calling thread's stack, as a script reaches it that calls itself without end, into `report` on
/// standard error and the end of the process with `exitCode`. An engine that has a limit of its own raises its own
/// error before.
void GuardStack(std::wstring report, int exitCode);

}  // namespace kwohost
