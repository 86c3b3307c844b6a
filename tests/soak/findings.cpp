#include "findings.h"

#include <windows.h>

#include <cstdio>
#include <mutex>

namespace kwo::soak {
namespace {

constexpr long kMostPrinted = 40;

/// A lock that the compiler's library lacks.
class Lock {
public:
    void lock() { AcquireSRWLockExclusive(&mLock); }
    void unlock() { ReleaseSRWLockExclusive(&mLock); }

private:
    SRWLOCK mLock = SRWLOCK_INIT;
};

Lock theLock;
long theCount = 0;
std::string theFirst;
const DWORD theBegin = GetTickCount();

}  // namespace

void Found(const std::string& what) {
    const std::lock_guard guard(theLock);
    if (++theCount == 1) theFirst = what;
    if (theCount > kMostPrinted) return;
    std::printf("%6.1f s  WRONG: %s\n", (GetTickCount() - theBegin) / 1000.0, what.c_str());
    std::fflush(stdout);
}

long FoundCount() {
    const std::lock_guard guard(theLock);
    return theCount;
}

std::string FirstFound() {
    const std::lock_guard guard(theLock);
    return theFirst;
}

}  // namespace kwo::soak
