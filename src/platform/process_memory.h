#pragma once

#include <cstdint>
#include <optional>

#include "platform/values.h"

namespace kwo::platform {

/// How much memory a process uses.
/// The call trace writes its changes.
///
///     const Handle process = memory.Open(ProcessMemory::kQueryInformation, false, processId);
///     if (const auto now = memory.Query(process)) use(now->workingSet);
///     if (process != 0) memory.Close(process);
///
/// No call raises anything. After a failure the last-error value says why.
class ProcessMemory {
public:
    /// The right that Query needs (PROCESS_QUERY_INFORMATION).
    static constexpr std::uint32_t kQueryInformation = 0x400;

    /// How much is in use now. Page faults are a count since the process started, everything else is bytes.
    struct Counters {
        std::uint32_t pageFaults = 0;
        std::uint64_t workingSet = 0;
        std::uint64_t pagedPool = 0;
        std::uint64_t nonPagedPool = 0;
        std::uint64_t pageFile = 0;

        friend bool operator==(const Counters&, const Counters&) = default;
    };

    virtual ~ProcessMemory() = default;

    /// Opens a process (OpenProcess); 0 on failure, for example if there is no such process or it may not be opened.
    /// The caller closes it.
    /// `access` is the system's PROCESS_ numbers, `inherit` whether child processes inherit the handle.
    virtual Handle Open(std::uint32_t access, bool inherit, std::uint32_t processId) = 0;
    /// The counters of now (GetProcessMemoryInfo).
    /// Nothing on failure and on systems without that call. `process` needs the right kQueryInformation.
    virtual std::optional<Counters> Query(Handle process) = 0;
    /// Ends a successful Open. `process` must not be used after it.
    virtual void Close(Handle process) = 0;
};

}  // namespace kwo::platform
