#pragma once

#include <windows.h>

namespace kwo::com_test {

/// Runs this program once more with one argument, for a minute at most, and returns its exit code.
DWORD ExitCodeOfThisProgram(const char* argument);

}  // namespace kwo::com_test
