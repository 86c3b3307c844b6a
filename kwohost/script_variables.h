#pragma once

#include "com_values.h"

namespace kwohost {

/// Empties the global variables of a script that is still running, so that it releases their objects.
/// `script` is the engine's object for the script, whose type information describes the variables, as in VBScript. An
/// engine that describes none keeps them. A variable that cannot be assigned is skipped. Releasing objects may run
/// code of theirs.
void EmptyVariables(IDispatch* script);

}  // namespace kwohost
