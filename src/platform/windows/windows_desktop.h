#pragma once

#include "platform/desktop.h"
#include "platform/windows/last_error.h"

namespace kwo::platform::windows {

class WindowsDesktop final : public Desktop {
public:
    explicit WindowsDesktop(LastError& lastError) : mLastError(lastError) {}

    bool WindowExists(Handle window) override;
    bool IsMinimised(Handle window) override;
    void Flash(Handle window, bool invert) override;
    Text WindowText(Handle window) override;
    std::int32_t AskUser(Handle owner, TextView prompt, TextView title, std::uint32_t style) override;

private:
    LastError& mLastError;
};

class WindowsScreen final : public Screen {
public:
    std::intptr_t MousePointer() override;
    void SetMousePointer(std::intptr_t pointer) override;
    Handle ActiveForm() override;
    std::int32_t HelpContext(Handle form) override;
    void SetHelpContext(Handle form, std::int32_t context) override;
    double TwipsPerPixelX() override;
    double TwipsPerPixelY() override;
    float Width() override;
    float Height() override;
};

}  // namespace kwo::platform::windows
