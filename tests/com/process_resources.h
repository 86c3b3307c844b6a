#pragma once

#include <map>
#include <string>

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
/// How many handles there are of each kind of object: "Event", "Thread". Keys are told by their names.
std::map<std::string, long> HandlesByKind();
/// Closes the keys that Wine has opened and will never close; how many there were. Wine for 64 bits loses one whenever
/// somebody looks into the classes of the other bitness: when COM has found no server of an object in this one, and at
/// each use of a font object by name. Nothing else keeps such a key while the program rests. 0 on Windows.
long CloseKeysLostByWine();

}  // namespace kwo::com_test
