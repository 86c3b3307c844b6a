#include "memory.h"

#include <malloc.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <new>

namespace {

/// How many allocations succeed until one fails; negative when none does.
int untilFailure = -1;

/// Different everywhere, so that a freed container does not look empty.
void FillWithBadAddresses(void* block) {
    constexpr std::uintptr_t kNobodysAddress = static_cast<std::uintptr_t>(0xDDDDDDDDDDDD0000);
    auto* const words = static_cast<std::uintptr_t*>(block);
    const std::size_t count = _msize(block) / sizeof *words;
    for (std::size_t i = 0; i < count; ++i)
        words[i] = kNobodysAddress + i * sizeof *words;
}

}  // namespace

void* operator new(std::size_t size) {
    if (untilFailure >= 0 && untilFailure-- == 0) throw std::bad_alloc();
    if (void* const block = std::malloc(size == 0 ? 1 : size)) return block;
    throw std::bad_alloc();
}

void operator delete(void* block) noexcept {
    if (!block) return;
    FillWithBadAddresses(block);
    std::free(block);
}

void operator delete(void* block, std::size_t) noexcept {
    operator delete(block);
}

namespace kwohost::tests {

FailingAllocation::FailingAllocation(int number) {
    untilFailure = number;
}

FailingAllocation::~FailingAllocation() {
    untilFailure = -1;
}

bool FailingAllocation::HasFailed() const {
    return untilFailure < 0;
}

}  // namespace kwohost::tests
