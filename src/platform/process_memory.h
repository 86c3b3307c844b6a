#pragma once

#include <cstdint>
#include <optional>

#include "platform/values.h"

namespace kwo::platform {

/// How much memory a process uses.
class ProcessMemory {
public:
    /// PROCESS_QUERY_INFORMATION.
    static constexpr std::uint32_t kQueryInformation = 0x400;

    /// Page faults are a count, everything else is bytes.
    struct Counters {
        std::uint32_t pageFaults = 0;
        std::uint64_t workingSet = 0;
        std::uint64_t pagedPool = 0;
        std::uint64_t nonPagedPool = 0;
        std::uint64_t pageFile = 0;

        friend bool operator==(const Counters&, const Counters&) = default;
    };

    virtual ~ProcessMemory() = default;

    /// Opens a process (OpenProcess); 0 on failure. The caller closes it. `access` is the system's PROCESS_ flags,
    /// `inherit` whether child processes inherit the handle.
    virtual Handle Open(std::uint32_t access, bool inherit, std::uint32_t processId) = 0;
    /// The counters of now (GetProcessMemoryInfo). Nothing on failure and on systems without that call. `process` needs
    /// the right kQueryInformation.
    virtual std::optional<Counters> Query(Handle process) = 0;
    /// Ends a successful Open.
    virtual void Close(Handle process) = 0;
};

}  // namespace kwo::platform
