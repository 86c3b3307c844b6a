#pragma once

#include <windows.h>

#include <atomic>

namespace kwo::com {

/// The DLL (or program) that this code is linked into.
HINSTANCE ThisModule();

/// What keeps the DLL loaded.
class Module {
public:
    static Module& Instance();

    void Lock() { ++mLocks; }
    void Unlock() { --mLocks; }
    bool CanUnload() const { return mLocks == 0; }

private:
    std::atomic<long> mLocks = 0;
};

/// What each DLL does, besides what all of ours do, when a thread of the process has ended.
void OnThreadEnd() noexcept;
/// The same when the DLL is unloaded and the process goes on. At the end of the process nobody is told: its other
/// threads are gone by then, whatever they held, and the system takes back everything.
void OnUnload() noexcept;

/// Keeps the DLL loaded for as long as it lives.
class ModuleLock {
public:
    ModuleLock() { Module::Instance().Lock(); }
    ~ModuleLock() { Module::Instance().Unlock(); }
    ModuleLock(const ModuleLock&) = delete;
    ModuleLock& operator=(const ModuleLock&) = delete;
};

}  // namespace kwo::com
