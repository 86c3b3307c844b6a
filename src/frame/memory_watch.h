#pragma once

#include <cstdint>

#include "platform/conversions.h"
#include "platform/process_memory.h"

namespace kwo::frame {

/// What changed in the memory of this process since the last look.
class MemoryWatch {
public:
    MemoryWatch(platform::ProcessMemory& memory, platform::Conversions& conversions)
        : mMemory(memory), mConversions(conversions) {}
    ~MemoryWatch() { Stop(); }
    MemoryWatch(const MemoryWatch&) = delete;
    MemoryWatch& operator=(const MemoryWatch&) = delete;

    /// Only while it is off.
    void Start(std::uint32_t processId);
    void Stop();
    bool IsOn() const { return mProcess != 0; }
    /// The next changes are counted from nothing.
    void Forget() { mBefore = {}; }
    /// A line with its line end; empty when nothing changed much, or nothing can be told.
    platform::Text ChangeLine();

private:
    platform::ProcessMemory& mMemory;
    platform::Conversions& mConversions;
    platform::Handle mProcess = 0;
    platform::ProcessMemory::Counters mBefore;
};

}  // namespace kwo::frame
