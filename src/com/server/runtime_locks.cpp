// The locks of the compiler's run-time. They replace its own functions of the same names, which create a semaphore for
// each lock and close few of them, so that each load of the DLL would cost the host some. These use the system's slim
// lock, which fits into the place of the semaphore's handle.

#include <windows.h>

#include <ext/concurrence.h>

#if __GNUC__ < 13  // later ones have such locks themselves

namespace {

template <class RuntimeLock>
SRWLOCK* SlimLock(RuntimeLock* lock) {
    static_assert(sizeof lock->sema == sizeof(SRWLOCK));
    return reinterpret_cast<SRWLOCK*>(&lock->sema);
}

void Take(__gthread_recursive_mutex_t* lock) {
    lock->owner = ::GetCurrentThreadId();
    lock->depth = 1;
}

/// Only the owner can find its own number there.
bool IsMine(const __gthread_recursive_mutex_t* lock) {
    return __atomic_load_n(&lock->owner, __ATOMIC_RELAXED) == ::GetCurrentThreadId();
}

}  // namespace

extern "C" {

int __gthr_win32_once(__gthread_once_t* once, void (*run)()) {
    if (__atomic_load_n(&once->done, __ATOMIC_ACQUIRE) != 0) return 0;
    if (::InterlockedIncrement(&once->started) == 0) {
        run();
        __atomic_store_n(&once->done, 1, __ATOMIC_RELEASE);
    }
    while (__atomic_load_n(&once->done, __ATOMIC_ACQUIRE) == 0)
        ::Sleep(0);
    return 0;
}

void __gthr_win32_mutex_init_function(__gthread_mutex_t* lock) {
    lock->sema = nullptr;
}
void __gthr_win32_mutex_destroy(__gthread_mutex_t*) {}
int __gthr_win32_mutex_lock(__gthread_mutex_t* lock) {
    ::AcquireSRWLockExclusive(SlimLock(lock));
    return 0;
}
int __gthr_win32_mutex_trylock(__gthread_mutex_t* lock) {
    return ::TryAcquireSRWLockExclusive(SlimLock(lock)) ? 0 : 1;
}
int __gthr_win32_mutex_unlock(__gthread_mutex_t* lock) {
    ::ReleaseSRWLockExclusive(SlimLock(lock));
    return 0;
}

void __gthr_win32_recursive_mutex_init_function(__gthread_recursive_mutex_t* lock) {
    *lock = {};
}
int __gthr_win32_recursive_mutex_destroy(__gthread_recursive_mutex_t*) {
    return 0;
}
int __gthr_win32_recursive_mutex_lock(__gthread_recursive_mutex_t* lock) {
    if (IsMine(lock)) {
        ++lock->depth;
    } else {
        ::AcquireSRWLockExclusive(SlimLock(lock));
        Take(lock);
    }
    return 0;
}
int __gthr_win32_recursive_mutex_trylock(__gthread_recursive_mutex_t* lock) {
    if (IsMine(lock)) {
        ++lock->depth;
    } else {
        if (!::TryAcquireSRWLockExclusive(SlimLock(lock))) return 1;
        Take(lock);
    }
    return 0;
}
int __gthr_win32_recursive_mutex_unlock(__gthread_recursive_mutex_t* lock) {
    if (--lock->depth != 0) return 0;
    lock->owner = 0;
    ::ReleaseSRWLockExclusive(SlimLock(lock));
    return 0;
}
}

#endif
