#include "platform/simulated/failing_memory.h"

#include <cstdlib>
#include <new>

namespace kwo::platform::simulated {

namespace {

thread_local int untilFailure = 0;

void* Allocated(std::size_t size) noexcept {
    if (untilFailure > 0 && --untilFailure == 0) return nullptr;
    return std::malloc(size > 0 ? size : 1);
}

}  // namespace

FailingMemory::FailingMemory(int nth) {
    untilFailure = nth;
}

FailingMemory::~FailingMemory() {
    untilFailure = 0;
}

bool FailingMemory::HasFailed() const {
    return untilFailure == 0;
}

}  // namespace kwo::platform::simulated

// Every form without an alignment, so that each allocation is freed by its partner.

void* operator new(std::size_t size) {
    if (void* const block = kwo::platform::simulated::Allocated(size)) return block;
    throw std::bad_alloc();
}
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    return kwo::platform::simulated::Allocated(size);
}
void* operator new[](std::size_t size) {
    return operator new(size);
}
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept {
    return kwo::platform::simulated::Allocated(size);
}
void operator delete(void* block) noexcept {
    std::free(block);
}
void operator delete(void* block, std::size_t) noexcept {
    std::free(block);
}
void operator delete[](void* block) noexcept {
    std::free(block);
}
void operator delete[](void* block, std::size_t) noexcept {
    std::free(block);
}
void operator delete(void* block, const std::nothrow_t&) noexcept {
    std::free(block);
}
void operator delete[](void* block, const std::nothrow_t&) noexcept {
    std::free(block);
}
