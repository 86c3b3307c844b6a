#pragma once

#include <cstdint>

namespace kwo::platform {

/// The message queue of the host's user-interface thread.
class MessageLoop {
public:
    virtual ~MessageLoop() = default;

    /// Dispatches what is pending and returns; a request to quit stays in the queue for the host's own loop. False when
    /// there is one: whoever waits here for the user should give up.
    virtual bool ProcessPending() = 0;
    /// MsgWaitForMultipleObjectsEx without handles.
    virtual void WaitForInputEx(std::uint32_t timeoutMs, std::uint32_t wakeMask, std::uint32_t flags) = 0;
    /// MsgWaitForMultipleObjects without handles, wait-all false.
    virtual void WaitForInput(std::uint32_t timeoutMs, std::uint32_t wakeMask) = 0;
};

}  // namespace kwo::platform
