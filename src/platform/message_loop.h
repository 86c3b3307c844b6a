#pragma once

#include <cstdint>

namespace kwo::platform {

/// The message queue of the host's user-interface thread.
class MessageLoop {
public:
    virtual ~MessageLoop() = default;

    /// Dispatches the pending messages and returns, after 50 ms at the latest if they never end. This may run code of
    /// the host, which may release objects. Returns false if the program was asked to quit: end the wait. The request
    /// stays in the queue for the host's own loop.
    virtual bool ProcessPending() = 0;
    /// Returns when a message arrives and after `timeoutMs` milliseconds at the latest; the message stays in the queue
    /// (MsgWaitForMultipleObjectsEx without handles). Returns at once if ProcessPending has left messages. `wakeMask`
    /// and `flags` are the system's.
    virtual void WaitForInputEx(std::uint32_t timeoutMs, std::uint32_t wakeMask, std::uint32_t flags) = 0;
    /// The same for systems that lack that call (MsgWaitForMultipleObjects without handles).
    virtual void WaitForInput(std::uint32_t timeoutMs, std::uint32_t wakeMask) = 0;
};

}  // namespace kwo::platform
