#pragma once

#include <windows.h>

#include <memory>

#include "platform/platform.h"
#include "platform/windows/module_use.h"

namespace kwo::platform::windows {

/// The services on Windows.
/// There is one for each thread that hosts a component; it is made, used and destroyed on that thread.
///
///     WindowsPlatform windows(module);
///     component::Component component(windows.Services());
///
/// When the module is unloaded, whichever thread unloads it destroys the rest, after StopCallbacks.
class WindowsPlatform {
public:
    /// `module` holds the component.
    /// `use` is told while the system may call into it and must outlive this object. Asks the system for nothing yet.
    explicit WindowsPlatform(HINSTANCE module, ModuleUse& use = ModuleUse::Nobody());
    ~WindowsPlatform();
    WindowsPlatform(const WindowsPlatform&) = delete;
    WindowsPlatform& operator=(const WindowsPlatform&) = delete;

    /// The services. They live as long as this object.
    Platform Services();
    /// Stops the timers and ends the listening to the taskbar: all that would still call into the module.
    /// Nobody is told. For the end of the module, from any thread.
    void StopCallbacks() noexcept;
    /// The thread that created this ends: tells the handlers of its timers, and stops the timers.
    void EndThread() noexcept;

private:
    /// The context and the services, one for each line of services.def.
    struct Parts;
    /// Hidden, so that users of this header need no header of a service.
    std::unique_ptr<Parts> mParts;
};

}  // namespace kwo::platform::windows
