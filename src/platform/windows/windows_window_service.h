#pragma once

#include "platform/window_service.h"
#include "platform/windows/context.h"

namespace kwo::platform::windows {

/// The windows of all programs.
/// A handle of the component is sign-extended to the system's.
/// Two oddities of Wine are evened out: the title of a window that does not exist, and the answer of a box that cannot
/// be shown.
class WindowsWindowService final : public WindowService {
public:
    explicit WindowsWindowService(Context& context) : mLastError(context.lastError) {}

    /// IsWindow. Sets the last-error value to 1400 if there is none.
    bool WindowExists(Handle window) override;
    bool IsMinimised(Handle window) override;
    void Flash(Handle window, bool invert) override;
    /// GetWindowTextA with a buffer of 255 bytes.
    Text WindowText(Handle window) override;
    /// MessageBoxA, which takes both texts in the ANSI code page.
    std::int32_t AskUser(Handle owner, TextView prompt, TextView title, std::uint32_t style) override;

private:
    LastError& mLastError;
};

}  // namespace kwo::platform::windows
