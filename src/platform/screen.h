#pragma once

#include <cstdint>

#include "platform/values.h"

namespace kwo::platform {

/// What the host's screen object tells and takes.
class Screen {
public:
    virtual ~Screen() = default;

    /// The pointer's shape; 0 is the default arrow.
    virtual std::intptr_t MousePointer() = 0;
    virtual void SetMousePointer(std::intptr_t pointer) = 0;
    /// The window of the active form; 0 when the host has none.
    virtual Handle ActiveForm() = 0;
    virtual std::int32_t HelpContext(Handle form) = 0;
    virtual void SetHelpContext(Handle form, std::int32_t context) = 0;
    /// 1440 by the logical dots per inch of the display.
    virtual double TwipsPerPixelX() = 0;
    virtual double TwipsPerPixelY() = 0;
    /// The whole screen in twips, a whole number of them to a pixel as everywhere: the factors above rounded, halves to
    /// even.
    virtual float Width() = 0;
    virtual float Height() = 0;
};

}  // namespace kwo::platform
