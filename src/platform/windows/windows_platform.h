#pragma once

#include <windows.h>

#include <memory>

#include "platform/platform.h"
#include "platform/windows/module_use.h"

namespace kwo::platform::windows {

/// The platform's services on Windows. One per thread that hosts a component.
class WindowsPlatform {
public:
    /// `module` is the one that holds the component; `use` hears when the system has to find it loaded.
    explicit WindowsPlatform(HINSTANCE module, ModuleUse& use = ModuleUse::Nobody());
    ~WindowsPlatform();
    WindowsPlatform(const WindowsPlatform&) = delete;
    WindowsPlatform& operator=(const WindowsPlatform&) = delete;

    Platform Services();
    /// Stops what would still call into the module.
    void StopTimers();
    /// The thread that made this ends: who waits for its timers hears of it.
    void EndThread() noexcept;

private:
    struct Parts;
    std::unique_ptr<Parts> mParts;
};

}  // namespace kwo::platform::windows
