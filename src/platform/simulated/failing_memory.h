#pragma once

#include "platform/simulated/uncounted_memory.h"

namespace kwo::platform::simulated {

/// Lets allocations of the calling thread fail with std::bad_alloc.
///
///     const FailingMemory failing(3);  // the third allocation from here
///     EXPECT_THROW(timer.AddAlarm(date, 7), std::bad_alloc);
///
/// What the simulated desktop allocates for itself neither counts nor fails. A thread may have one at a time.
class FailingMemory {
public:
    enum class Which { One, ThatAndAllLater };

    /// Begins to count. The `nth` allocation fails (1 is the next one), or that one and all later ones.
    explicit FailingMemory(int nth, Which which = Which::One);
    /// Ends it; a failure that has not come does not come.
    ~FailingMemory();
    FailingMemory(const FailingMemory&) = delete;
    FailingMemory& operator=(const FailingMemory&) = delete;

    /// False while fewer allocations than that were made.
    bool HasFailed() const;
};

}  // namespace kwo::platform::simulated
