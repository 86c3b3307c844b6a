#pragma once

#include "form.h"

namespace kwohost {

/// The global objects `Host` and `Screen`. The forms are closed with the script.
void AddFormObjects(ScriptHost& host);

}  // namespace kwohost
