#pragma once

#include <windows.h>

#include "platform/windows/last_error.h"
#include "platform/windows/module_use.h"
#include "platform/windows/system_library.h"

namespace kwo::platform::windows {

/// What the services of one platform share.
/// A service whose constructor takes it gets it and keeps references: it outlives the services.
///
///     explicit WindowsClock(Context& context) : mLastError(context.lastError) {}
struct Context {
    /// The module that holds the component.
    HINSTANCE module;
    /// Is told while the system may call into the module.
    ModuleUse& use;
    /// The component's last-error value.
    LastError lastError{};
    /// Loaded when a service first asks for a function of it.
    SystemLibrary network{L"mpr.dll"};
};

}  // namespace kwo::platform::windows
