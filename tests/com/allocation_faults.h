#pragma once

namespace kwo::com_test {

/// Makes one allocation of the DLL under test fail while it lives: of those of its own memory and of the automation
/// strings that it makes itself. What the system allocates for it does not fail. The DLL must be loaded.
class AllocationFaults {
public:
    /// The allocation with this number fails, counted from 1. Later ones succeed: the compiler's run-time needs
    /// memory itself to raise.
    explicit AllocationFaults(long which);
    AllocationFaults(const AllocationFaults&) = delete;
    AllocationFaults& operator=(const AllocationFaults&) = delete;
    ~AllocationFaults();

    /// Whether it has failed by now.
    bool Happened() const;
};

}  // namespace kwo::com_test
