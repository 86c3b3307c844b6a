#pragma once

#include <cstdint>

#include "platform/text.h"
#include "platform/variant.h"

namespace kwo::platform {

/// What the component uses of the system's description of a font (LOGFONTA).
struct FontRecord {
    /// Pixels. Negative for the height of the characters alone, positive with the space between lines.
    std::int32_t height = 0;
    /// 0 to 1000; 400 is normal, 700 bold.
    std::int32_t weight = 0;
    /// These three are 0 for no, and anything else for yes.
    std::uint8_t italic = 0;
    std::uint8_t underline = 0;
    std::uint8_t strikeOut = 0;
    /// At most 32 characters of the code page.
    Text faceName;
};

/// The fonts in the system's non-client metrics, as the user has set them in the control panel.
struct NonClientFonts {
    /// The titles of windows, and of small windows such as tool boxes.
    FontRecord caption;
    FontRecord smallCaption;
    /// Menus.
    FontRecord menu;
    /// Status bars and tool tips.
    FontRecord status;
    /// The texts of message boxes.
    FontRecord message;
};

/// The fonts of the desktop, and font objects for the host.
class SystemFonts {
public:
    virtual ~SystemFonts() = default;

    /// Fills `fonts` (SystemParametersInfoA with SPI_GETNONCLIENTMETRICS). False on failure; `fonts` then stays.
    virtual bool QueryNonClient(NonClientFonts& fonts) = 0;
    /// Creates a standard font object with the properties Name, Size (points), Bold, Italic, Underline and
    /// Strikethrough.
    /// It begins without a name and not bold; the caller sets all of them.
    /// Never null.
    /// Raises what the system reports.
    virtual HostObjectRef MakeFont() = 0;
};

}  // namespace kwo::platform
