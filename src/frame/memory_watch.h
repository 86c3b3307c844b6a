#pragma once

#include <cstdint>

#include "platform/conversions.h"
#include "platform/process_memory.h"

namespace kwo::frame {

/// Watches how the memory use of this process changes, for the trace's log. It looks only when it is asked for a line.
class MemoryWatch {
public:
    /// Keeps references to both; they must outlive it.
    MemoryWatch(platform::ProcessMemory& memory, platform::Conversions& conversions)
        : mMemory(memory), mConversions(conversions) {}
    /// Stops watching.
    ~MemoryWatch() { Stop(); }
    MemoryWatch(const MemoryWatch&) = delete;
    MemoryWatch& operator=(const MemoryWatch&) = delete;

    /// Starts to watch the process with this identifier.
    /// Call it only while the watch is off.
    /// If the process cannot be opened, the watch stays off and nobody is told.
    void Start(std::uint32_t processId);
    /// Stops watching. The counters of the last look are kept.
    void Stop();
    /// True between a successful Start and Stop.
    bool IsOn() const { return mProcess != 0; }
    /// Makes the next line count all changes from 0.
    void Forget() { mBefore = {}; }
    /// A line, with its line end, about what has changed since the previous call: page file, paged pool, non-paged
    /// pool and working set in bytes, with the separators of the user's locale.
    /// Empty if none of the first three has changed by more than 1024 bytes, if the watch is off, or if the system
    /// does not tell. A change that is too small is forgotten, not added to the next one.
    platform::Text ChangeLine();

private:
    platform::ProcessMemory& mMemory;
    platform::Conversions& mConversions;
    /// 0 while the watch is off.
    platform::Handle mProcess = 0;
    /// The counters of the last line, or of the last look that gave none.
    platform::ProcessMemory::Counters mBefore;
};

}  // namespace kwo::frame
