#pragma once

#include <cstdint>

#include "frame/host_identity.h"
#include "frame/millisecond_clock.h"
#include "platform/message_loop.h"

namespace kwo::frame {

/// Waiting on the user-interface thread without freezing it.
class MessageWait {
public:
    MessageWait(platform::MessageLoop& messages, MillisecondClock& clock, HostIdentity& identity)
        : mMessages(messages), mClock(clock), mIdentity(identity) {}

    /// Returns after `milliseconds`, at once for 0 or less. What is pending at the start is processed in any case, what
    /// arrives later only with `pumpMessages`: timers and forwarded events then run inside. False when the wait was
    /// given up because the program has been asked to quit.
    bool KWO_Wait(std::int32_t milliseconds, bool pumpMessages);

    /// Returns when a message arrives, which stays in the queue, and after `timeoutMs` at the latest.
    void WaitForInput(std::uint32_t timeoutMs);

private:
    platform::MessageLoop& mMessages;
    MillisecondClock& mClock;
    HostIdentity& mIdentity;
};

}  // namespace kwo::frame
