#pragma once

#include <cstdint>

#include "platform/text.h"
#include "platform/variant.h"

namespace kwo::platform {

/// What the component uses of a LOGFONTA.
struct FontRecord {
    std::int32_t height = 0;  ///< pixels, negative for the height of the characters alone
    std::int32_t weight = 0;
    std::uint8_t italic = 0;
    std::uint8_t underline = 0;
    std::uint8_t strikeOut = 0;
    Text faceName;  ///< at most 32 characters of the code page
};

/// The fonts of NONCLIENTMETRICSA.
struct NonClientFonts {
    FontRecord caption;
    FontRecord smallCaption;
    FontRecord menu;
    FontRecord status;
    FontRecord message;
};

/// The fonts that the desktop is drawn with, and font objects for the host.
class SystemFonts {
public:
    virtual ~SystemFonts() = default;

    /// SystemParametersInfoA for the non-client metrics; false on failure, `fonts` is then left as it was.
    virtual bool QueryNonClient(NonClientFonts& fonts) = 0;
    /// A new standard font object: Name, Size, Bold, Italic, Underline, Strikethrough.
    virtual HostObjectRef MakeFont() = 0;
};

}  // namespace kwo::platform
