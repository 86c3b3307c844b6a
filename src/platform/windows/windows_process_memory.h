#pragma once

#include "platform/process_memory.h"
#include "platform/windows/last_error.h"
#include "platform/windows/system_library.h"

namespace kwo::platform::windows {

class WindowsProcessMemory final : public ProcessMemory {
public:
    /// `counters` is the library that has GetProcessMemoryInfo.
    WindowsProcessMemory(LastError& lastError, SystemLibrary& counters) : mLastError(lastError), mCounters(counters) {}

    Handle Open(std::uint32_t access, bool inherit, std::uint32_t processId) override;
    std::optional<Counters> Query(Handle process) override;
    void Close(Handle process) override;

private:
    LastError& mLastError;
    SystemLibrary& mCounters;
};

}  // namespace kwo::platform::windows
