#pragma once

#include <windows.h>

#include <memory>

#include "platform/platform.h"
#include "platform/windows/module_use.h"

namespace kwo::platform::windows {

/// The services on Windows. There is one for each thread that hosts a component.
class WindowsPlatform {
public:
    /// `module` holds the component. `use` is told while the system may call into it.
    explicit WindowsPlatform(HINSTANCE module, ModuleUse& use = ModuleUse::Nobody());
    ~WindowsPlatform();
    WindowsPlatform(const WindowsPlatform&) = delete;
    WindowsPlatform& operator=(const WindowsPlatform&) = delete;

    /// The services. They live as long as this object, which must be used on the thread that created it.
    Platform Services();
    /// Stops everything that would still call into the module.
    void StopTimers();
    /// The thread that created this ends: tells the handlers of its timers.
    void EndThread() noexcept;

private:
    struct Parts;
    std::unique_ptr<Parts> mParts;
};

}  // namespace kwo::platform::windows
