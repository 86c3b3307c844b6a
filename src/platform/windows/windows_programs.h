#pragma once

#include "platform/programs.h"
#include "platform/windows/last_error.h"
#include "platform/windows/system_library.h"

namespace kwo::platform::windows {

class WindowsPrograms final : public Programs {
public:
    WindowsPrograms(LastError& lastError, SystemLibrary& composition)
        : mLastError(lastError), mComposition(composition) {}

    void Activate(TextView title) override;
    std::int32_t Start(TextView commandLine, std::int16_t windowMode) override;

private:
    LastError& mLastError;
    SystemLibrary& mComposition;
};

}  // namespace kwo::platform::windows
