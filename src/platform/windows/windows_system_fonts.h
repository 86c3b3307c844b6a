#pragma once

#include "platform/system_fonts.h"
#include "platform/windows/context.h"

namespace kwo::platform::windows {

/// Fonts by SPI_GETNONCLIENTMETRICS, with the record of older systems, and the system's own font objects
/// (OleCreateFontIndirect).
/// The ids of a font's properties are known in advance, because asking for them by name is slow.
class WindowsSystemFonts final : public SystemFonts {
public:
    explicit WindowsSystemFonts(Context& context) : mLastError(context.lastError) {}

    /// The record has 340 bytes, as before its last member came, so that every system accepts it.
    bool QueryNonClient(NonClientFonts& fonts) override;
    /// The system would choose a font itself without a description: this one has no name, normal weight and the
    /// default character set.
    HostObjectRef MakeFont() override;

private:
    LastError& mLastError;
};

}  // namespace kwo::platform::windows
