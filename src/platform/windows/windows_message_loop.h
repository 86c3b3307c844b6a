#pragma once

#include "platform/message_loop.h"
#include "platform/windows/context.h"

namespace kwo::platform::windows {

/// The message queue of the calling thread. ProcessPending puts a WM_QUIT back with its exit code.
class WindowsMessageLoop final : public MessageLoop {
public:
    explicit WindowsMessageLoop(Context& context) : mLastError(context.lastError) {}

    bool ProcessPending() override;
    void WaitForInputEx(std::uint32_t timeoutMs, std::uint32_t wakeMask, std::uint32_t flags) override;
    void WaitForInput(std::uint32_t timeoutMs, std::uint32_t wakeMask) override;

private:
    LastError& mLastError;
    /// Messages are left that a wait would not return for: it has been told of them.
    bool mHasMore = false;
};

}  // namespace kwo::platform::windows
