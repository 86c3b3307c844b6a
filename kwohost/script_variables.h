#pragma once

#include "com_values.h"

namespace kwohost {

/// Empties the global variables of a script, so that it lets go of its objects although it is still running.
/// `script` is the engine's own object for the script, which describes them in its type information: VBScript's does.
void EmptyVariables(IDispatch* script);

}  // namespace kwohost
