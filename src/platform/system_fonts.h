#pragma once

#include <cstdint>

#include "platform/text.h"
#include "platform/variant.h"

namespace kwo::platform {

/// What the component uses of the system's description of a font (LOGFONTA).
struct FontRecord {
    std::int32_t height = 0;  ///< pixels, negative for the height of the characters alone
    std::int32_t weight = 0;  ///< 400 is normal, 700 bold
    std::uint8_t italic = 0;
    std::uint8_t underline = 0;
    std::uint8_t strikeOut = 0;
    Text faceName;  ///< at most 32 characters of the code page
};

/// The fonts in the system's non-client metrics.
struct NonClientFonts {
    FontRecord caption;
    FontRecord smallCaption;
    FontRecord menu;
    FontRecord status;
    FontRecord message;
};

/// The fonts of the desktop, and font objects for the host.
class SystemFonts {
public:
    virtual ~SystemFonts() = default;

    /// Fills `fonts` (SystemParametersInfoA). False on failure; `fonts` then stays.
    virtual bool QueryNonClient(NonClientFonts& fonts) = 0;
    /// Creates a standard font object: Name, Size, Bold, Italic, Underline, Strikethrough. Raises what the system
    /// reports.
    virtual HostObjectRef MakeFont() = 0;
};

}  // namespace kwo::platform
