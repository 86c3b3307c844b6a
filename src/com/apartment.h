#pragma once

#include <windows.h>

#include <memory>

#include "component/component.h"
#include "platform/windows/lock.h"
#include "platform/windows/windows_platform.h"

namespace kwo::com {

/// What the objects of one apartment thread share: the platform and the component.
/// Two apartments never share state, so it needs no locks.
/// Objects hold shares in it, so it may outlive its place in the list, but not its last object.
struct Apartment {
    /// `module` is this DLL, `use` counts what the system may call in it. Runs on the thread of the apartment.
    Apartment(HINSTANCE module, platform::windows::ModuleUse& use)
        : platform(module, use), component(platform.Services()) {}

    /// Made first and destroyed last: the component refers to its services.
    platform::windows::WindowsPlatform platform;
    component::Component component;
};

/// All apartments that use the DLL.
/// It is initialised before any code runs and never destroyed: at the end of the process it stays as it is.
///
///     const std::shared_ptr<Apartment> apartment = Apartments::Instance().Current();
class Apartments {
public:
    /// The only one. May be called on any thread, at any time.
    static Apartments& Instance();

    constexpr Apartments() = default;

    /// The apartment of the calling thread.
    /// It is created at the first call and kept until the thread ends or the DLL is unloaded.
    /// Never null.
    /// Raises std::bad_alloc; the thread then has no apartment, and the next call tries again.
    std::shared_ptr<Apartment> Current();
    /// Takes the apartment of the calling thread out of the list, stops its timers and cancels what they wait for.
    /// Does nothing for a thread that has none.
    /// Runs under the loader's lock. Objects of the thread that are still held keep the apartment alive.
    void ThreadEnded() noexcept;
    /// Ends all apartments and stops their timers, without telling the timers' owners.
    /// Called when the DLL is unloaded and the process goes on; no other thread uses the DLL then.
    void EndAll() noexcept;

private:
    /// One for each thread, in a list. ThreadValue leads a thread to its own.
    struct Entry;

    /// Null when the list is empty. The caller owns the entry.
    Entry* TakeFirst() noexcept;
    /// The entry must be in the list.
    void TakeOut(const Entry& entry) noexcept;

    /// Guards the list. It is not held while code of the host may run.
    platform::windows::Lock mLock;
    Entry* mFirst = nullptr;
};

}  // namespace kwo::com
