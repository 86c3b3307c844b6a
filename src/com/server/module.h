#pragma once

#include <windows.h>

#include <atomic>

namespace kwo::com {

/// The module, a DLL or a program, that this code is linked into.
/// Asks nobody, so it may be called under the loader's lock.
HINSTANCE ThisModule();

/// Counts what keeps the DLL loaded: objects, locks of class factories, running timers and hidden windows.
/// Each module has a count of its own.
class Module {
public:
    /// The only one of this module.
    static Module& Instance();

    /// May run on any thread, as all members. Every Lock needs one Unlock.
    void Lock() { ++mLocks; }
    void Unlock() { --mLocks; }
    /// What DllCanUnloadNow answers. It may change at once if another thread uses the DLL.
    bool CanUnload() const { return mLocks == 0; }

private:
    std::atomic<long> mLocks = 0;
};

/// What a DLL does in addition when a thread of the process ends.
/// Each DLL defines it.
/// Runs on that thread under the loader's lock: it must not wait for another thread and loads nothing.
void OnThreadEnd() noexcept;
/// The same when the DLL is unloaded and the process goes on.
/// It is not called at the end of the process: the other threads are gone then, whatever they held, and the system
/// takes everything back.
void OnUnload() noexcept;

/// Keeps the DLL loaded while this object exists.
/// Make it a member of every object that the host may hold:
///
///     class Enumerator : ... { ModuleLock mModuleLock; };
class ModuleLock {
public:
    ModuleLock() { Module::Instance().Lock(); }
    ~ModuleLock() { Module::Instance().Unlock(); }
    ModuleLock(const ModuleLock&) = delete;
    ModuleLock& operator=(const ModuleLock&) = delete;
};

}  // namespace kwo::com
