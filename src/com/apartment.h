#pragma once

#include <windows.h>

#include <memory>

#include "component/component.h"
#include "platform/windows/lock.h"
#include "platform/windows/windows_platform.h"

namespace kwo::com {

/// What the objects of one apartment thread share. Two apartments never share state, so it needs no locks.
struct Apartment {
    /// `module` is this DLL, `use` counts what the system may call in it.
    Apartment(HINSTANCE module, platform::windows::ModuleUse& use)
        : platform(module, use), component(platform.Services()) {}

    platform::windows::WindowsPlatform platform;
    component::Component component;
};

/// All apartments that use the DLL. It is initialised before any code runs and never destroyed: at the end of the
/// process it stays as it is.
class Apartments {
public:
    /// The only one.
    static Apartments& Instance();

    constexpr Apartments() = default;

    /// The apartment of the calling thread. It is created at the first call and kept until the thread ends or the DLL
    /// is unloaded.
    std::shared_ptr<Apartment> Current();
    /// Takes the apartment of the calling thread out of the list. Runs under the loader's lock.
    void ThreadEnded() noexcept;
    /// Ends all apartments. Called when the DLL is unloaded and the process goes on.
    void EndAll() noexcept;

private:
    /// One for each thread, in a list. ThreadValue leads a thread to its own.
    struct Entry;

    Entry* TakeFirst() noexcept;
    void TakeOut(const Entry& entry) noexcept;

    platform::windows::Lock mLock;
    Entry* mFirst = nullptr;
};

}  // namespace kwo::com
