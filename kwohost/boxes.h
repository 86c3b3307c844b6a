#pragma once

#include <memory>

#include "form.h"

namespace kwohost {

/// Adds the functions `MsgBox` and `InputBox`; docs/kwohost.md describes them. Call it before the script runs.
/// A box belongs to the form that is active. While it is open, the user can use no form; timers and events
/// arrive.
void AddBoxes(ScriptHost& host, const std::shared_ptr<Forms>& forms);

}  // namespace kwohost
