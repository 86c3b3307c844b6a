#include "platform/windows/windows_process_memory.h"

#include <windows.h>
#include <psapi.h>

#include "platform/windows/handles.h"

namespace kwo::platform::windows {

namespace {

using GetProcessMemoryInfoFunction = BOOL WINAPI(HANDLE process, PROCESS_MEMORY_COUNTERS* counters, DWORD size);

}  // namespace

Handle WindowsProcessMemory::Open(std::uint32_t access, bool inherit, std::uint32_t processId) {
    return FromNative(mLastError.After(::OpenProcess(access, inherit ? TRUE : FALSE, processId)));
}

std::optional<ProcessMemory::Counters> WindowsProcessMemory::Query(Handle process) {
    auto* const function = mLastError.After(mCounters.Find<GetProcessMemoryInfoFunction>("GetProcessMemoryInfo"));
    // 40 bytes in a 32-bit process. A 64-bit process has wider counters and accepts no other size.
    PROCESS_MEMORY_COUNTERS counters = {};
    if (function == nullptr || !mLastError.After(function(ToNative<HANDLE>(process), &counters, sizeof counters))) {
        return std::nullopt;
    }
    return Counters{counters.PageFaultCount, counters.WorkingSetSize, counters.QuotaPagedPoolUsage,
                    counters.QuotaNonPagedPoolUsage, counters.PagefileUsage};
}

void WindowsProcessMemory::Close(Handle process) {
    mLastError.After(::CloseHandle(ToNative<HANDLE>(process)));
}

}  // namespace kwo::platform::windows
