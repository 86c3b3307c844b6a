// What the compiler's stack protector needs: the value that stands behind protected arrays, and what happens when it
// has been overwritten. The compiler's own library would ask the system's cryptography for the value at each load,
// which takes longer than everything else that a load does.

#include <windows.h>

#include <x86intrin.h>

#include <cstdint>

extern "C" {
std::uintptr_t __stack_chk_guard = 0;

/// The stack can no longer be trusted: the system ends the process at once, without running any of its code.
[[noreturn]] void __stack_chk_fail() {
    __asm__ volatile("int $0x29" ::"c"(FAST_FAIL_STACK_COOKIE_CHECK_FAILURE));
    __builtin_unreachable();
}
}

namespace {

/// Another value each time: of the processor's clock and of two addresses that the system chooses. Its lowest byte is
/// zero, which ends a text that was copied over it.
/// Runs before every other initialisation of the module, so no protected function has begun yet; it is not protected.
[[gnu::constructor(101)]] void MakeValue() {
    std::uint64_t value = __rdtsc();
    value ^= reinterpret_cast<std::uintptr_t>(&value);
    value ^= reinterpret_cast<std::uintptr_t>(&__stack_chk_guard);
    value *= 0x9E37'79B9'7F4A'7C15;
    value ^= value >> 32;
    __stack_chk_guard = static_cast<std::uintptr_t>(value) & ~std::uintptr_t{0xFF};
}

}  // namespace
