#pragma once

#include <windows.h>

namespace kwo::platform::windows {

/// A lock for std::lock_guard: this compiler's library has none of its own. Ready without construction, gone without
/// destruction, so that one may be global.
class Lock {
public:
    constexpr Lock() = default;
    Lock(const Lock&) = delete;
    Lock& operator=(const Lock&) = delete;

    void lock() noexcept { ::AcquireSRWLockExclusive(&mLock); }
    void unlock() noexcept { ::ReleaseSRWLockExclusive(&mLock); }

private:
    SRWLOCK mLock = SRWLOCK_INIT;
};

}  // namespace kwo::platform::windows
