#pragma once

#include "platform/programs.h"
#include "platform/windows/context.h"

namespace kwo::platform::windows {

/// Windows of all programs, in the order in which the system lists them (EnumWindows), and CreateProcessW with the
/// search path of the system. A window that does not answer is not waited for.
class WindowsPrograms final : public Programs {
public:
    explicit WindowsPrograms(Context& context) : mLastError(context.lastError) {}

    void Activate(TextView title) override;
    std::int32_t Start(TextView commandLine, std::int16_t windowMode) override;

private:
    LastError& mLastError;
    SystemLibrary mComposition{L"dwmapi.dll"};
};

}  // namespace kwo::platform::windows
