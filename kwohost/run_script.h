#pragma once

#include <string>
#include <vector>

#include "source_file.h"

namespace kwohost {

/// Runs a script with all its objects and returns the exit code.
int RunScript(SourceFile source, const std::vector<std::wstring>& arguments);

}  // namespace kwohost
