#pragma once

namespace kwo::platform::simulated {

/// Lets one allocation of the calling thread fail: the `nth` from now, with std::bad_alloc.
class FailingMemory {
public:
    explicit FailingMemory(int nth);
    ~FailingMemory();
    FailingMemory(const FailingMemory&) = delete;
    FailingMemory& operator=(const FailingMemory&) = delete;

    /// False while fewer allocations than that were made.
    bool HasFailed() const;
};

}  // namespace kwo::platform::simulated
