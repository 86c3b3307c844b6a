#include "platform/simulated/failing_memory.h"

#include <cstdlib>
#include <new>

namespace kwo::platform::simulated {

namespace {

/// Allocations until one fails; 0 if none is to fail.
thread_local int untilFailure = 0;
thread_local bool staysShort = false;
thread_local bool hasFailed = false;

bool Fails() noexcept {
    if (untilFailure == 0 || UncountedMemory::IsActive()) return false;
    if (untilFailure > 1) {
        --untilFailure;
        return false;
    }
    if (!staysShort) untilFailure = 0;
    hasFailed = true;
    return true;
}

void* Allocated(std::size_t size) noexcept {
    if (Fails()) return nullptr;
    return std::malloc(size > 0 ? size : 1);
}

}  // namespace

FailingMemory::FailingMemory(int nth, Which which) {
    untilFailure = nth;
    staysShort = which == Which::ThatAndAllLater;
    hasFailed = false;
}

FailingMemory::~FailingMemory() {
    untilFailure = 0;
}

bool FailingMemory::HasFailed() const {
    return hasFailed;
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
