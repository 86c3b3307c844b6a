#pragma once

#include <windows.h>

#include <string>

namespace kwo::com_support {

/// The file that `module` was loaded from, however long its path is; null is the program. Empty when the system does
/// not know the module; GetLastError says why.
std::wstring ModulePath(HMODULE module);

}  // namespace kwo::com_support
