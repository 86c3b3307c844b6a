#pragma once

#include "com_values.h"

namespace kwohost {

/// Empties the global variables of a script that is still running, so that it releases their objects. `script` is the
/// engine's object for the script, whose type information describes the variables, as in VBScript.
void EmptyVariables(IDispatch* script);

}  // namespace kwohost
