#pragma once

#include "form.h"

namespace kwohost {

/// Adds the global objects `Host` and `Screen` and the functions `MsgBox` and `InputBox`; docs/kwohost.md lists their
/// members. Call it before the script runs. The forms are closed with the script, without Unload.
///
///     AddFormObjects(host);
///     host.Run();
void AddFormObjects(ScriptHost& host);

}  // namespace kwohost
