// The compiler's run-time takes things from the process and never gives them back. Here they are taken in a way that
// can be undone: a host that loads and unloads the DLL for days must not run out of anything (docs/architecture.md).

#include "com/server/runtime.h"

#include <windows.h>

#include <cxxabi.h>

#include <atomic>

// Defined by the run-time: the start of the module's thread-local data as it was linked, and the index that the loader
// gave it.
extern "C" {
extern char* _tls_start;
extern ULONG _tls_index;
}

namespace __gnu_cxx {
void __freeres();
}

namespace kwo::com {

namespace {

/// What the C++ run-time keeps about the exceptions of a thread, as its binary interface lays it out.
struct ThreadExceptions {
    void* caught;
    unsigned uncaught;
};

/// One for each thread. The loader creates and frees it, so it needs no slot of the host and cannot fail.
struct ThreadData {
    ThreadExceptions exceptions;
    void* value;
};

__attribute__((section(".tls$KWO"), used)) ThreadData gThreadData = {};

/// The system keeps the list of a thread's blocks, one for each module, at a fixed place.
ThreadData& OfThisThread() {
    char** blocks = nullptr;
#ifdef _WIN64
    __asm__("mov %%gs:0x58, %0" : "=r"(blocks));
#else
    __asm__("mov %%fs:0x2C, %0" : "=r"(blocks));
#endif
    const auto offset = reinterpret_cast<char*>(&gThreadData) - reinterpret_cast<char*>(&_tls_start);
    return *reinterpret_cast<ThreadData*>(blocks[_tls_index] + offset);
}

#ifndef _WIN64
/// The 32-bit unwinder has one lock with a semaphore, which it creates when the module is loaded and never closes.
constinit std::atomic<HANDLE> gUnwinderSemaphore = nullptr;

HANDLE WINAPI MakeUnwinderSemaphore(SECURITY_ATTRIBUTES* security, LONG first, LONG most, const wchar_t* name) {
    const HANDLE made = ::CreateSemaphoreExW(security, first, most, name, 0, SEMAPHORE_ALL_ACCESS);
    gUnwinderSemaphore = made;
    return made;
}
#endif

}  // namespace

void*& ThreadValue() {
    return OfThisThread().value;
}

void GiveBackRuntime() {
    // The memory for exceptions that are thrown when there is no memory.
    __gnu_cxx::__freeres();
#ifndef _WIN64
    if (const HANDLE semaphore = gUnwinderSemaphore.exchange(nullptr)) ::CloseHandle(semaphore);
#endif
}

}  // namespace kwo::com

// In place of the run-time's own functions of the same names.

/// The run-time's own function would keep its data in a slot of the host that it never frees.
extern "C" abi::__cxa_eh_globals* abi::__cxa_get_globals() noexcept {
    return reinterpret_cast<abi::__cxa_eh_globals*>(&kwo::com::OfThisThread().exceptions);
}
extern "C" abi::__cxa_eh_globals* abi::__cxa_get_globals_fast() noexcept {
    return abi::__cxa_get_globals();
}

#ifndef _WIN64
/// What the unwinder calls as the system's CreateSemaphoreW.
extern "C" {
extern decltype(&::CreateSemaphoreW) const gCreateSemaphore __asm__("__imp__CreateSemaphoreW@16");
decltype(&::CreateSemaphoreW) const gCreateSemaphore = &kwo::com::MakeUnwinderSemaphore;
}
#endif
