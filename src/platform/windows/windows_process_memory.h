#pragma once

#include "platform/process_memory.h"
#include "platform/windows/context.h"

namespace kwo::platform::windows {

/// The counters of psapi.dll, which is loaded when they are first asked for. In a 32-bit process they have 32 bits.
class WindowsProcessMemory final : public ProcessMemory {
public:
    explicit WindowsProcessMemory(Context& context) : mLastError(context.lastError) {}

    Handle Open(std::uint32_t access, bool inherit, std::uint32_t processId) override;
    /// GetProcessMemoryInfo. The only size of the record that the system accepts is that of the program's bitness.
    std::optional<Counters> Query(Handle process) override;
    void Close(Handle process) override;

private:
    LastError& mLastError;
    SystemLibrary mCounters{L"psapi.dll"};
};

}  // namespace kwo::platform::windows
