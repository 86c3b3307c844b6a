#pragma once

#include <windows.h>

#include <objidl.h>

#include <atomic>

namespace kwo::com_test {

/// Counts the blocks of automation memory (strings, arrays, error texts ...) in use that were taken since its first
/// use. Strings count only after SwitchOffStringCache. It stays for good: the system keeps calling a spy
/// until the last block it saw is freed, which a leak would put off for ever.
class AllocationCount final : public IMallocSpy {
public:
    static AllocationCount& Instance();
    AllocationCount(const AllocationCount&) = delete;
    AllocationCount& operator=(const AllocationCount&) = delete;

    long InUse() const { return mInUse; }

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override;
    ULONG STDMETHODCALLTYPE AddRef() override { return 2; }
    ULONG STDMETHODCALLTYPE Release() override { return 1; }
    SIZE_T STDMETHODCALLTYPE PreAlloc(SIZE_T size) override { return size; }
    void* STDMETHODCALLTYPE PostAlloc(void* block) override;
    void* STDMETHODCALLTYPE PreFree(void* block, BOOL spied) override;
    void STDMETHODCALLTYPE PostFree(BOOL) override {}
    SIZE_T STDMETHODCALLTYPE PreRealloc(void* block, SIZE_T size, void** newBlock, BOOL spied) override;
    void* STDMETHODCALLTYPE PostRealloc(void* block, BOOL) override { return block; }
    void* STDMETHODCALLTYPE PreGetSize(void* block, BOOL) override { return block; }
    SIZE_T STDMETHODCALLTYPE PostGetSize(SIZE_T size, BOOL) override { return size; }
    void* STDMETHODCALLTYPE PreDidAlloc(void* block, BOOL) override { return block; }
    int STDMETHODCALLTYPE PostDidAlloc(void*, BOOL, int answer) override { return answer; }
    void STDMETHODCALLTYPE PreHeapMinimize() override {}
    void STDMETHODCALLTYPE PostHeapMinimize() override {}

private:
    AllocationCount() = default;

    std::atomic<long> mInUse = 0;
};

/// Without its cache every string shows up in a count of allocations.
void SwitchOffStringCache();

/// Blocks in use in the process's own heap, where the C and C++ allocations of the DLL live.
long HeapBlocksInUse();

}  // namespace kwo::com_test
