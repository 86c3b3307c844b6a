#pragma once

#include <cstdint>
#include <optional>

#include "platform/values.h"

namespace kwo::platform {

/// How much memory a process uses.
class ProcessMemory {
public:
    static constexpr std::uint32_t kQueryInformation = 0x400;

    /// In bytes, the faults are a count.
    struct Counters {
        std::uint32_t pageFaults = 0;
        std::uint64_t workingSet = 0;
        std::uint64_t pagedPool = 0;
        std::uint64_t nonPagedPool = 0;
        std::uint64_t pageFile = 0;

        friend bool operator==(const Counters&, const Counters&) = default;
    };

    virtual ~ProcessMemory() = default;

    /// OpenProcess; 0 on failure.
    virtual Handle Open(std::uint32_t access, bool inherit, std::uint32_t processId) = 0;
    /// GetProcessMemoryInfo; nothing on failure, also on a system that has no such call.
    virtual std::optional<Counters> Query(Handle process) = 0;
    virtual void Close(Handle process) = 0;
};

}  // namespace kwo::platform
