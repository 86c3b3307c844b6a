#pragma once

#include <cstdint>

#include "platform/conversions.h"
#include "platform/process_memory.h"

namespace kwo::frame {

/// Watches how the memory use of this process changes, for the trace's log.
class MemoryWatch {
public:
    /// Keeps references to both; they must outlive it.
    MemoryWatch(platform::ProcessMemory& memory, platform::Conversions& conversions)
        : mMemory(memory), mConversions(conversions) {}
    /// Stops watching.
    ~MemoryWatch() { Stop(); }
    MemoryWatch(const MemoryWatch&) = delete;
    MemoryWatch& operator=(const MemoryWatch&) = delete;

    /// Starts to watch the process with this identifier. Call it only while the watch is off. The watch stays off if
    /// the process cannot be opened.
    void Start(std::uint32_t processId);
    /// Stops watching. The counters of the last look are kept.
    void Stop();
    /// True between a successful Start and Stop.
    bool IsOn() const { return mProcess != 0; }
    /// Makes the next line count all changes from 0.
    void Forget() { mBefore = {}; }
    /// A line, with its line end, about what has changed since the previous call. Empty if no counter has changed by
    /// more than 1024 bytes, if the watch is off, or if the system does not tell.
    platform::Text ChangeLine();

private:
    platform::ProcessMemory& mMemory;
    platform::Conversions& mConversions;
    platform::Handle mProcess = 0;
    platform::ProcessMemory::Counters mBefore;
};

}  // namespace kwo::frame
