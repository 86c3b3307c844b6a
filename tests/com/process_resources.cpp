#include "process_resources.h"

#include <windows.h>

#include <vector>

#include "wine.h"

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

/// Calls `see` with each handle of this process.
template <class See>
void ForEachHandle(See&& see) {
    constexpr ULONG_PTR kStep = 4;
    constexpr ULONG_PTR kHighest = 0x8000;
    for (ULONG_PTR value = kStep; value < kHighest; value += kStep) {
        const auto handle = reinterpret_cast<HANDLE>(value);
        DWORD flags = 0;
        if (GetHandleInformation(handle, &flags)) see(handle);
    }
}

/// The text that NtQueryObject tells first of an object; empty if it tells nothing.
std::string Told(HANDLE handle, int what) {
    struct Counted {
        USHORT bytes;
        USHORT capacity;
        const wchar_t* text;
    };
    using Query = LONG(NTAPI*)(HANDLE, int, void*, ULONG, ULONG*);
    static const auto query = reinterpret_cast<Query>(
        reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "NtQueryObject")));
    alignas(Counted) char answer[2048] = {};
    ULONG size = 0;
    if (query(handle, what, answer, sizeof answer, &size) < 0) return {};
    const auto& told = *reinterpret_cast<const Counted*>(answer);
    return std::string(told.text, told.text + told.bytes / sizeof(wchar_t));
}

/// The name of the object's type, with the name of a key behind it.
std::string KindOf(HANDLE handle) {
    constexpr int kName = 1;
    constexpr int kType = 2;
    const std::string type = Told(handle, kType);
    return type == "Key" ? type + ' ' + Told(handle, kName) : type;
}

}  // namespace

long HandlesInUse() {
    long count = 0;
    ForEachHandle([&](HANDLE) { ++count; });
    return count;
}

std::map<std::string, long> HandlesByKind() {
    std::map<std::string, long> kinds;
    ForEachHandle([&](HANDLE handle) { ++kinds[KindOf(handle)]; });
    return kinds;
}

long CloseKeysLostByWine() {
    if (!IsWine()) return 0;
    long count = 0;
    ForEachHandle([&](HANDLE handle) {
        if (KindOf(handle) != "Key \\REGISTRY\\Machine\\Software\\Classes\\Wow6432Node") return;
        CloseHandle(handle);
        ++count;
    });
    return count;
}

Resources ResourcesInUse() {
    return {SlotsInUse(), HandlesInUse(), HeapBytesInUse(), CommittedBytes()};
}

}  // namespace kwo::com_test
