#pragma once

#include <string>
#include <vector>

#include "source_file.h"

namespace kwohost {

/// Runs a script with all its objects and returns the exit code.
/// `arguments` are those behind the script's name.
/// The thread must be in an apartment of its own (STA). It may end the process itself, if the script quits or fails
/// inside an event.
/// Raises std::bad_alloc if there is no memory to begin with.
int RunScript(SourceFile source, const std::vector<std::wstring>& arguments);

}  // namespace kwohost
