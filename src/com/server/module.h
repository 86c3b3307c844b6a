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

/// Keeps the DLL loaded for as long as it lives.
class ModuleLock {
public:
    ModuleLock() { Module::Instance().Lock(); }
    ~ModuleLock() { Module::Instance().Unlock(); }
    ModuleLock(const ModuleLock&) = delete;
    ModuleLock& operator=(const ModuleLock&) = delete;
};

}  // namespace kwo::com
