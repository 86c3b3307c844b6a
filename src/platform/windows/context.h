#pragma once

#include <windows.h>

#include "platform/windows/last_error.h"
#include "platform/windows/module_use.h"
#include "platform/windows/system_library.h"

namespace kwo::platform::windows {

/// What the services of one platform share. A service whose constructor takes it gets it.
struct Context {
    HINSTANCE module;  ///< that holds the component
    ModuleUse& use;    ///< counts while the system may call into the module
    LastError lastError{};
    SystemLibrary network{L"mpr.dll"};
};

}  // namespace kwo::platform::windows
