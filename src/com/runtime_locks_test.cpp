// The locks of the compiler's run-time that the component brings itself.

#include <windows.h>
// after <windows.h>
#include <gtest/gtest.h>

#include <ext/concurrence.h>

#if __GNUC__ < 13

namespace kwo::com {
namespace {

struct Attempt {
    __gthread_recursive_mutex_t* lock;
    int refused;
};

DWORD WINAPI TryToLock(void* given) {
    auto& attempt = *static_cast<Attempt*>(given);
    attempt.refused = __gthread_recursive_mutex_trylock(attempt.lock);
    if (attempt.refused == 0) __gthread_recursive_mutex_unlock(attempt.lock);
    return 0;
}

bool AnotherThreadGets(__gthread_recursive_mutex_t& lock) {
    Attempt attempt = {&lock, -1};
    const HANDLE thread = ::CreateThread(nullptr, 0, &TryToLock, &attempt, 0, nullptr);
    ::WaitForSingleObject(thread, INFINITE);
    ::CloseHandle(thread);
    return attempt.refused == 0;
}

TEST(RuntimeLocks, ARecursiveOneIsHeldUntilItsLastRelease) {
    __gthread_recursive_mutex_t lock;
    __GTHREAD_RECURSIVE_MUTEX_INIT_FUNCTION(&lock);
    EXPECT_TRUE(AnotherThreadGets(lock));

    EXPECT_EQ(__gthread_recursive_mutex_lock(&lock), 0);
    EXPECT_EQ(__gthread_recursive_mutex_lock(&lock), 0);
    EXPECT_EQ(__gthread_recursive_mutex_trylock(&lock), 0);
    for (int held = 3; held > 0; --held) {
        EXPECT_FALSE(AnotherThreadGets(lock)) << held;
        EXPECT_EQ(__gthread_recursive_mutex_unlock(&lock), 0);
    }

    EXPECT_TRUE(AnotherThreadGets(lock));
    __gthread_recursive_mutex_destroy(&lock);
}

}  // namespace
}  // namespace kwo::com

#endif
