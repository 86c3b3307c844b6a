#pragma once

#include <windows.h>

#include <memory>
#include <vector>

#include "frame/component.h"
#include "platform/windows/lock.h"
#include "platform/windows/windows_platform.h"

namespace kwo::com {

/// What the objects of one apartment thread share. Two apartments never share state, so nothing in here is guarded.
struct Apartment {
    Apartment(HINSTANCE module, platform::windows::ModuleUse& use)
        : platform(module, use), component(platform.Services()) {}

    platform::windows::WindowsPlatform platform;
    frame::Component component;
};

/// The apartments that use the loaded DLL.
class Apartments {
public:
    static Apartments& Instance();

    /// The DLL is loaded.
    void Attach();
    /// It is unloaded while the process goes on.
    void Detach();
    void ThreadEnded();

    /// The calling thread's apartment, made at its first object and kept until the thread ends or the DLL goes.
    std::shared_ptr<Apartment> Current();

private:
    DWORD mSlot = TLS_OUT_OF_INDEXES;
    platform::windows::Lock mLock;
    std::vector<std::shared_ptr<Apartment>> mApartments;
};

}  // namespace kwo::com
