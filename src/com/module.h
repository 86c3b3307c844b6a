#pragma once

#include <windows.h>

#include <atomic>
#include <memory>
#include <mutex>
#include <vector>

#include "frame/component.h"
#include "platform/windows/windows_platform.h"

namespace kwo::com {

/// What the objects of one apartment thread share. Two apartments never share state, so nothing in here is guarded.
struct Apartment {
    explicit Apartment(HINSTANCE module) : platform(module), component(platform.Services()) {}

    platform::windows::WindowsPlatform platform;
    frame::Component component;
};

/// The loaded DLL: what keeps it loaded, and the apartments that use it.
class Module {
public:
    static Module& Instance();

    void Attach(HINSTANCE handle);
    /// The DLL is unloaded while the process goes on.
    void Detach();
    void ThreadEnded();

    HINSTANCE Handle() const { return mHandle; }
    /// The calling thread's apartment, made at its first object and kept until the thread ends or the DLL goes.
    std::shared_ptr<Apartment> CurrentApartment();

    void Lock() { ++mLocks; }
    void Unlock() { --mLocks; }
    bool CanUnload() const { return mLocks == 0; }

private:
    HINSTANCE mHandle = nullptr;
    DWORD mSlot = TLS_OUT_OF_INDEXES;
    std::atomic<long> mLocks = 0;
    std::mutex mMutex;
    std::vector<std::shared_ptr<Apartment>> mApartments;
};

/// Keeps the DLL loaded for as long as it lives.
class ModuleLock {
public:
    ModuleLock() { Module::Instance().Lock(); }
    ~ModuleLock() { Module::Instance().Unlock(); }
    ModuleLock(const ModuleLock&) = delete;
    ModuleLock& operator=(const ModuleLock&) = delete;
};

}  // namespace kwo::com
