#pragma once

#include "platform/message_loop.h"
#include "platform/windows/context.h"

namespace kwo::platform::windows {

/// The message queue of the calling thread (PeekMessageW, TranslateMessage, DispatchMessageW), which all windows of
/// the thread share, also those of other components.
/// ProcessPending puts a WM_QUIT back with its exit code.
class WindowsMessageLoop final : public MessageLoop {
public:
    explicit WindowsMessageLoop(Context& context) : mLastError(context.lastError) {}

    /// PeekMessageW until there is no message or GetTickCount has moved on by 50 ms.
    bool ProcessPending() override;
    /// Returns without asking the system if ProcessPending has left messages, once.
    void WaitForInputEx(std::uint32_t timeoutMs, std::uint32_t wakeMask, std::uint32_t flags) override;
    void WaitForInput(std::uint32_t timeoutMs, std::uint32_t wakeMask) override;

private:
    LastError& mLastError;
    /// Messages are left that a wait would not return for: it has been told of them.
    bool mHasMore = false;
};

}  // namespace kwo::platform::windows
