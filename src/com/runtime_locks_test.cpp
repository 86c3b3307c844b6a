// The locks of the compiler's run-time that the component brings itself.

#include <windows.h>
// after <windows.h>
#include <gtest/gtest.h>

#include <ext/concurrence.h>

#include "com/thread.h"

#if __GNUC__ < 13

namespace kwo::com {
namespace {

/// Whether another thread gets the lock, which it gives back.
template <class Lock>
bool IsFree(Lock& lock, int (*tryLock)(Lock*), int (*unlock)(Lock*)) {
    bool isFree = false;
    com_test::Thread([&] {
        isFree = tryLock(&lock) == 0;
        if (isFree) unlock(&lock);
    }).Join();
    return isFree;
}
bool IsFree(__gthread_mutex_t& lock) {
    return IsFree(lock, __gthread_mutex_trylock, __gthread_mutex_unlock);
}
bool IsFree(__gthread_recursive_mutex_t& lock) {
    return IsFree(lock, __gthread_recursive_mutex_trylock, __gthread_recursive_mutex_unlock);
}

TEST(RuntimeLocks, APlainOneIsHeldUntilItsRelease) {
    __gthread_mutex_t lock;
    __GTHREAD_MUTEX_INIT_FUNCTION(&lock);
    EXPECT_TRUE(IsFree(lock));

    EXPECT_EQ(__gthread_mutex_lock(&lock), 0);
    EXPECT_FALSE(IsFree(lock));
    EXPECT_EQ(__gthread_mutex_unlock(&lock), 0);
    EXPECT_EQ(__gthread_mutex_trylock(&lock), 0);
    EXPECT_FALSE(IsFree(lock));
    EXPECT_EQ(__gthread_mutex_unlock(&lock), 0);

    EXPECT_TRUE(IsFree(lock));
    __gthread_mutex_destroy(&lock);
}

TEST(RuntimeLocks, ARecursiveOneIsHeldUntilItsLastRelease) {
    __gthread_recursive_mutex_t lock;
    __GTHREAD_RECURSIVE_MUTEX_INIT_FUNCTION(&lock);
    EXPECT_TRUE(IsFree(lock));

    EXPECT_EQ(__gthread_recursive_mutex_lock(&lock), 0);
    EXPECT_EQ(__gthread_recursive_mutex_lock(&lock), 0);
    EXPECT_EQ(__gthread_recursive_mutex_trylock(&lock), 0);
    for (int held = 3; held > 0; --held) {
        EXPECT_FALSE(IsFree(lock)) << held;
        EXPECT_EQ(__gthread_recursive_mutex_unlock(&lock), 0);
    }

    EXPECT_TRUE(IsFree(lock));
    __gthread_recursive_mutex_destroy(&lock);
}

}  // namespace
}  // namespace kwo::com

#endif
