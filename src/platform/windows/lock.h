#pragma once

#include <windows.h>

namespace kwo::platform::windows {

/// A lock for std::lock_guard, because this compiler's library has none.
/// It needs no construction and no destruction, so it may be global. It is the system's slim lock: it takes no handle
/// and no memory.
///
///     constinit Lock gLock;
///     const std::lock_guard guard(gLock);
class Lock {
public:
    constexpr Lock() = default;
    Lock(const Lock&) = delete;
    Lock& operator=(const Lock&) = delete;

    /// Waits for ever. The owner must not lock again. Under the loader's lock, hold it for a few instructions only.
    void lock() noexcept { ::AcquireSRWLockExclusive(&mLock); }
    /// Only on the thread that locked.
    void unlock() noexcept { ::ReleaseSRWLockExclusive(&mLock); }

private:
    SRWLOCK mLock = SRWLOCK_INIT;
};

}  // namespace kwo::platform::windows
