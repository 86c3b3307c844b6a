#pragma once

#include "platform/window_service.h"
#include "platform/windows/context.h"

namespace kwo::platform::windows {

/// The windows of all programs. A handle of the component is sign-extended to the system's.
class WindowsWindowService final : public WindowService {
public:
    explicit WindowsWindowService(Context& context) : mLastError(context.lastError) {}

    bool WindowExists(Handle window) override;
    bool IsMinimised(Handle window) override;
    void Flash(Handle window, bool invert) override;
    Text WindowText(Handle window) override;
    std::int32_t AskUser(Handle owner, TextView prompt, TextView title, std::uint32_t style) override;

private:
    LastError& mLastError;
};

}  // namespace kwo::platform::windows
