#pragma once

#include "platform/programs.h"
#include "platform/windows/context.h"

namespace kwo::platform::windows {

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
