#pragma once

#include <windows.h>

#include <atomic>

namespace kwo::com {

/// The module, a DLL or a program, that this code is linked into.
HINSTANCE ThisModule();

/// Counts what keeps the DLL loaded: objects, locks of class factories, running timers and hidden windows.
class Module {
public:
    /// The only one of this module.
    static Module& Instance();

    /// May run on any thread, as all members.
    void Lock() { ++mLocks; }
    void Unlock() { --mLocks; }
    /// What DllCanUnloadNow answers.
    bool CanUnload() const { return mLocks == 0; }

private:
    std::atomic<long> mLocks = 0;
};

/// What a DLL does in addition when a thread of the process ends. Each DLL defines it.
void OnThreadEnd() noexcept;
/// The same when the DLL is unloaded and the process goes on. It is not called at the end of the process: the other
/// threads are gone then, whatever they held, and the system takes everything back.
void OnUnload() noexcept;

/// Keeps the DLL loaded while this object exists.
class ModuleLock {
public:
    ModuleLock() { Module::Instance().Lock(); }
    ~ModuleLock() { Module::Instance().Unlock(); }
    ModuleLock(const ModuleLock&) = delete;
    ModuleLock& operator=(const ModuleLock&) = delete;
};

}  // namespace kwo::com
