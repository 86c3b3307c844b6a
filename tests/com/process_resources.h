#pragma once

namespace kwo::com_test {

/// What this process holds of the system, or the difference of two such states.
struct Resources {
    long slots;                ///< thread-local ones
    long handles;              ///< of the kernel's objects
    long long heapBytes;       ///< in use in all heaps
    long long committedBytes;  ///< private memory

    Resources operator-(const Resources& other) const {
        return {slots - other.slots, handles - other.handles, heapBytes - other.heapBytes,
                committedBytes - other.committedBytes};
    }
};

Resources ResourcesInUse();
/// Handles are looked for one by one: Wine's GetProcessHandleCount always says 0.
long HandlesInUse();

}  // namespace kwo::com_test
