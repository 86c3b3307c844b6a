#pragma once

namespace kwohost::tests {

/// Lets one allocation of this program fail: the next one is number 0. The test programs fill freed memory with
/// addresses that nobody can read, so that a use of it ends in a crash.
class FailingAllocation {
public:
    explicit FailingAllocation(int number);
    FailingAllocation(const FailingAllocation&) = delete;
    FailingAllocation& operator=(const FailingAllocation&) = delete;
    ~FailingAllocation();

    /// Whether the allocation has been reached.
    bool HasFailed() const;
};

}  // namespace kwohost::tests
