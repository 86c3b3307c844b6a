#pragma once

namespace kwo::platform::simulated {

/// Lets one allocation of the calling thread fail: the `nth` from now, with std::bad_alloc.
class FailingMemory {
public:
    /// Begins to count. 1 is the next allocation.
    explicit FailingMemory(int nth);
    /// Ends it; a failure that has not come does not come.
    ~FailingMemory();
    FailingMemory(const FailingMemory&) = delete;
    FailingMemory& operator=(const FailingMemory&) = delete;

    /// False while fewer allocations than that were made.
    bool HasFailed() const;
};

}  // namespace kwo::platform::simulated
