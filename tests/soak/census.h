#pragma once

namespace kwo::soak {

/// What the process holds at one moment.
struct Census {
    long handles = 0;
    long gdiObjects = 0;
    long userObjects = 0;
    long long privateBytes = 0;
    long long heapBytes = 0;
    long liveObjects = 0;  ///< of the component's, that the program has made and that have not ended
    long keysLostByWine =
        0;  ///< registry keys that a fault of Wine's had left open; they are closed before handles are counted
};

/// GetGuiResources answers 0 under Wine: there the objects are looked for one by one.
Census TakeCensus();

}  // namespace kwo::soak
