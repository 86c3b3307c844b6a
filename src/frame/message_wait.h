#pragma once

#include <cstdint>

#include "frame/host_identity.h"
#include "frame/millisecond_clock.h"
#include "platform/message_loop.h"

namespace kwo::frame {

/// Waits on the user-interface thread without freezing it.
/// The wait takes no processor time.
///
///     if (!wait.KWO_Wait(750, true)) return;  // the program ends
class MessageWait {
public:
    /// Keeps references to all of these; they must outlive it.
    MessageWait(platform::MessageLoop& messages, MillisecondClock& clock, HostIdentity& identity)
        : mMessages(messages), mClock(clock), mIdentity(identity) {}

    /// Waits `milliseconds`; returns at once for 0 or less.
    /// Pending messages are processed at the start.
    /// Later ones are processed only with `pumpMessages`; timers and events of the host then run inside the call,
    /// which may release objects. Code that runs for longer than the wait makes it longer.
    /// Returns false if the wait ended early because the program was asked to quit. The request is still in the queue;
    /// end what you are doing.
    bool KWO_Wait(std::int32_t milliseconds, bool pumpMessages);

    /// Returns when a message arrives, without processing it, and after `timeoutMs` milliseconds at the latest.
    /// May return earlier without a message.
    void WaitForInput(std::uint32_t timeoutMs);

private:
    platform::MessageLoop& mMessages;
    MillisecondClock& mClock;
    HostIdentity& mIdentity;
};

}  // namespace kwo::frame
