#pragma once

#include "platform/programs.h"
#include "platform/windows/last_error.h"

namespace kwo::platform::windows {

class WindowsPrograms final : public Programs {
public:
    explicit WindowsPrograms(LastError& lastError) : mLastError(lastError) {}

    void Activate(TextView title) override;
    std::int32_t Start(TextView commandLine, std::int16_t windowMode) override;

private:
    LastError& mLastError;
};

}  // namespace kwo::platform::windows
