#pragma once

#include <windows.h>

#include <memory>

#include "component/component.h"
#include "platform/windows/lock.h"
#include "platform/windows/windows_platform.h"

namespace kwo::com {

/// What the objects of one apartment thread share. Two apartments never share state, so nothing in here is guarded.
struct Apartment {
    Apartment(HINSTANCE module, platform::windows::ModuleUse& use)
        : platform(module, use), component(platform.Services()) {}

    platform::windows::WindowsPlatform platform;
    component::Component component;
};

/// The apartments that use the loaded DLL. Ready before anything runs, and never ended as an object: at the end of the
/// process they stay as they are.
class Apartments {
public:
    static Apartments& Instance();

    constexpr Apartments() = default;

    /// The calling thread's apartment, made at its first object and kept until the thread ends or the DLL goes.
    std::shared_ptr<Apartment> Current();
    void ThreadEnded() noexcept;
    /// The DLL is unloaded while the process goes on.
    void EndAll() noexcept;

private:
    /// One per thread, in a list; the thread's own value leads to it.
    struct Entry;

    Entry* TakeFirst() noexcept;
    void TakeOut(const Entry& entry) noexcept;

    platform::windows::Lock mLock;
    Entry* mFirst = nullptr;
};

}  // namespace kwo::com
