#include "allocation_count.h"

namespace kwo::com_test {

void SwitchOffStringCache() {
    // The function is in no header or import library.
    FARPROC function = GetProcAddress(LoadLibraryW(L"oleaut32.dll"), "SetOaNoCache");
    if (function != nullptr) reinterpret_cast<void(STDAPICALLTYPE*)()>(reinterpret_cast<void*>(function))();
}

AllocationCount& AllocationCount::Instance() {
    static AllocationCount& count = []() -> AllocationCount& {
        static AllocationCount made;
        CoRegisterMallocSpy(&made);
        return made;
    }();
    return count;
}

HRESULT STDMETHODCALLTYPE AllocationCount::QueryInterface(REFIID iid, void** object) {
    if (iid != IID_IUnknown && iid != IID_IMallocSpy) {
        *object = nullptr;
        return E_NOINTERFACE;
    }
    *object = static_cast<IMallocSpy*>(this);
    return S_OK;
}

void* STDMETHODCALLTYPE AllocationCount::PostAlloc(void* block) {
    if (block != nullptr) ++mInUse;
    return block;
}

void* STDMETHODCALLTYPE AllocationCount::PreFree(void* block, BOOL spied) {
    if (spied && block != nullptr) --mInUse;
    return block;
}

SIZE_T STDMETHODCALLTYPE AllocationCount::PreRealloc(void* block, SIZE_T size, void** newBlock, BOOL) {
    if (block == nullptr && size != 0) ++mInUse;
    *newBlock = block;
    return size;
}

long HeapBlocksInUse() {
    const HANDLE heap = GetProcessHeap();
    long blocks = 0;
    if (!HeapLock(heap)) return -1;
    PROCESS_HEAP_ENTRY entry = {};
    while (HeapWalk(heap, &entry)) {
        if ((entry.wFlags & PROCESS_HEAP_ENTRY_BUSY) != 0) ++blocks;
    }
    HeapUnlock(heap);
    return blocks;
}

}  // namespace kwo::com_test
