#pragma once

#include <cstdint>

namespace kwo::platform {

/// The message queue of the host's user-interface thread.
/// The component has no thread of its own, so while it waits it runs the host's messages:
///
///     while (!done && messages.ProcessPending()) messages.WaitForInput(100, 0xFF);
class MessageLoop {
public:
    virtual ~MessageLoop() = default;

    /// Dispatches the pending messages and returns, after 50 ms at the latest if they never end.
    /// One message that takes longer is not interrupted.
    /// This may run code of the host, which may release objects and call this component again.
    /// Returns false if the program was asked to quit: end the wait. The request stays in the queue for the host's own
    /// loop.
    virtual bool ProcessPending() = 0;
    /// Returns when a message arrives and after `timeoutMs` milliseconds at the latest; 0xFFFFFFFF waits for ever.
    /// The message stays in the queue (MsgWaitForMultipleObjectsEx without handles).
    /// Only a message that arrives after the queue was last looked at ends the wait. But if ProcessPending ran out of
    /// its 50 ms and has left messages, the next wait returns at once.
    /// `wakeMask` is the system's QS_ numbers: which messages count. `flags` is its MWMO_ numbers. A failure returns
    /// at once too.
    virtual void WaitForInputEx(std::uint32_t timeoutMs, std::uint32_t wakeMask, std::uint32_t flags) = 0;
    /// The same for systems that lack that call (MsgWaitForMultipleObjects without handles).
    virtual void WaitForInput(std::uint32_t timeoutMs, std::uint32_t wakeMask) = 0;
};

}  // namespace kwo::platform
