#pragma once

#include "script_host.h"

namespace kwohost {

/// Adds the functions `MsgBox` and `InputBox`; docs/kwohost.md describes them. Call it before the script runs.
/// A box belongs to the form that is active. While it is open, the script's other windows take no input; timers and
/// events arrive.
void AddBoxes(ScriptHost& host);

}  // namespace kwohost
