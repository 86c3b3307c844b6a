#pragma once

namespace kwo::platform::simulated {

/// While one exists, FailingMemory neither counts nor refuses the allocations of the thread. They nest.
class UncountedMemory {
public:
    UncountedMemory() : mBefore(sUncounted) { sUncounted = true; }
    ~UncountedMemory() { sUncounted = mBefore; }
    UncountedMemory(const UncountedMemory&) = delete;
    UncountedMemory& operator=(const UncountedMemory&) = delete;

    static bool IsActive() { return sUncounted; }

private:
    friend class CountedMemory;
    static inline thread_local bool sUncounted = false;

    bool mBefore;
};

/// Takes UncountedMemory back for a while: the desktop calls the component.
class CountedMemory {
public:
    CountedMemory() : mBefore(UncountedMemory::sUncounted) { UncountedMemory::sUncounted = false; }
    ~CountedMemory() { UncountedMemory::sUncounted = mBefore; }
    CountedMemory(const CountedMemory&) = delete;
    CountedMemory& operator=(const CountedMemory&) = delete;

private:
    bool mBefore;
};

}  // namespace kwo::platform::simulated
