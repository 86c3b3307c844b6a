#pragma once

#include <atomic>
#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

#include "live_objects.h"
#include "thread.h"

namespace kwo::soak {

/// Threads with apartments of their own that make objects, use them, and give them back, also those of other
/// apartments. The thread that makes this object must process messages while they run.
class ApartmentWork {
public:
    explicit ApartmentWork(std::uint64_t seed);
    ApartmentWork(const ApartmentWork&) = delete;
    ApartmentWork& operator=(const ApartmentWork&) = delete;
    /// All threads must have ended.
    ~ApartmentWork();

    bool HasEnded() const { return mRunning == 0; }

private:
    void Start(DWORD apartment, std::function<void()> work);

    std::atomic<long> mRunning = 0;
    LiveObject mTimer;    ///< used by the other threads
    LiveObject mUtility;  ///< the same
    std::vector<std::unique_ptr<com_test::Thread>> mThreads;
};

}  // namespace kwo::soak
