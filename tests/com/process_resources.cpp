#include "process_resources.h"

#include <windows.h>

#include <vector>

namespace kwo::com_test {
namespace {

/// The slots in use are those that cannot be had.
long SlotsInUse() {
    std::vector<DWORD> free;
    free.reserve(TLS_MINIMUM_AVAILABLE + 1024);
    for (DWORD slot = TlsAlloc(); slot != TLS_OUT_OF_INDEXES; slot = TlsAlloc())
        free.push_back(slot);
    for (const DWORD slot : free)
        TlsFree(slot);
    return -static_cast<long>(free.size());
}

long long BytesInUse(HANDLE heap) {
    long long bytes = 0;
    PROCESS_HEAP_ENTRY entry = {};
    if (!HeapLock(heap)) return 0;
    while (HeapWalk(heap, &entry)) {
        if ((entry.wFlags & PROCESS_HEAP_ENTRY_BUSY) != 0) bytes += entry.cbData;
    }
    HeapUnlock(heap);
    return bytes;
}

long long HeapBytesInUse() {
    HANDLE heaps[256];
    const DWORD count = GetProcessHeaps(256, heaps);
    long long bytes = 0;
    for (DWORD at = 0; at < count && at < 256; ++at)
        bytes += BytesInUse(heaps[at]);
    return bytes;
}

long long CommittedBytes() {
    long long bytes = 0;
    MEMORY_BASIC_INFORMATION region = {};
    for (const char* at = nullptr; VirtualQuery(at, &region, sizeof region) != 0;
         at = static_cast<const char*>(region.BaseAddress) + region.RegionSize) {
        if (region.State == MEM_COMMIT && region.Type == MEM_PRIVATE)
            bytes += static_cast<long long>(region.RegionSize);
    }
    return bytes;
}

}  // namespace

long HandlesInUse() {
    constexpr ULONG_PTR kStep = 4;
    constexpr ULONG_PTR kHighest = 0x8000;
    long count = 0;
    for (ULONG_PTR value = kStep; value < kHighest; value += kStep) {
        DWORD flags = 0;
        if (GetHandleInformation(reinterpret_cast<HANDLE>(value), &flags)) ++count;
    }
    return count;
}

Resources ResourcesInUse() {
    return {SlotsInUse(), HandlesInUse(), HeapBytesInUse(), CommittedBytes()};
}

}  // namespace kwo::com_test
