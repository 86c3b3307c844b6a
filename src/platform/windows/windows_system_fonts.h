#pragma once

#include "platform/system_fonts.h"
#include "platform/windows/context.h"

namespace kwo::platform::windows {

/// Fonts by SPI_GETNONCLIENTMETRICS, and the system's own font objects (OleCreateFontIndirect).
class WindowsSystemFonts final : public SystemFonts {
public:
    explicit WindowsSystemFonts(Context& context) : mLastError(context.lastError) {}

    bool QueryNonClient(NonClientFonts& fonts) override;
    HostObjectRef MakeFont() override;

private:
    LastError& mLastError;
};

}  // namespace kwo::platform::windows
