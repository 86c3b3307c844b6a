#pragma once

#include "platform/system_fonts.h"
#include "platform/windows/last_error.h"

namespace kwo::platform::windows {

class WindowsSystemFonts final : public SystemFonts {
public:
    explicit WindowsSystemFonts(LastError& lastError) : mLastError(lastError) {}

    bool QueryNonClient(NonClientFonts& fonts) override;
    HostObjectRef MakeFont() override;

private:
    LastError& mLastError;
};

}  // namespace kwo::platform::windows
