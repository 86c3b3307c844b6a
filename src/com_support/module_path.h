#pragma once

#include <windows.h>

#include <string>

namespace kwo::com_support {

/// The full path of the file that `module` was loaded from, however long it is; null is the program.
/// Empty if the system does not know the module; GetLastError says why.
/// The module must stay loaded during the call.
/// Raises std::bad_alloc.
std::wstring ModulePath(HMODULE module);

}  // namespace kwo::com_support
