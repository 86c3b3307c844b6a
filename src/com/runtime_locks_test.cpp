// The locks of the compiler's run-time that the component brings itself.

#include <windows.h>
// after <windows.h>
#include <gtest/gtest.h>

#include <ext/concurrence.h>

#include "com/thread.h"

#if __GNUC__ < 13

namespace kwo::com {
namespace {

bool AnotherThreadGets(__gthread_recursive_mutex_t& lock) {
    bool gets = false;
    com_test::Thread([&] {
        gets = __gthread_recursive_mutex_trylock(&lock) == 0;
        if (gets) __gthread_recursive_mutex_unlock(&lock);
    }).Join();
    return gets;
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
