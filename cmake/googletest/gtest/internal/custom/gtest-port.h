// GoogleTest's own place for what a port provides itself. Its Notification is made of std::mutex and
// std::condition_variable, which this compiler's library does not have; only GoogleTest's tests of itself wait for one.
#pragma once

#include <atomic>

#define GTEST_HAS_NOTIFICATION_ 1

namespace testing::internal {

class Notification {
public:
    void Notify() { mNotified = true; }
    void WaitForNotification() const {
        while (!mNotified) {
        }
    }

private:
    std::atomic<bool> mNotified = false;
};

}  // namespace testing::internal
