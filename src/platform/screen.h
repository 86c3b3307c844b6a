#pragma once

#include <cstdint>

#include "platform/values.h"

namespace kwo::platform {

/// What the host's screen object tells and accepts.
class Screen {
public:
    virtual ~Screen() = default;

    /// The shape of the pointer, as an opaque value; 0 is the default arrow.
    virtual std::intptr_t MousePointer() = 0;
    /// Sets the shape of the pointer: 0, or a value of MousePointer.
    virtual void SetMousePointer(std::intptr_t pointer) = 0;
    /// The window of the active form; 0 if the host has none.
    virtual Handle ActiveForm() = 0;
    /// The number of the help topic of a form; 0 if it has none.
    virtual std::int32_t HelpContext(Handle form) = 0;
    /// Sets the number of the help topic of a form.
    virtual void SetHelpContext(Handle form, std::int32_t context) = 0;
    /// 1440 divided by the logical dots per inch of the display. It may be a fraction.
    virtual double TwipsPerPixelX() = 0;
    /// The same for the vertical axis.
    virtual double TwipsPerPixelY() = 0;
    /// The width of the whole primary screen in twips: pixels times the factor above, rounded to a whole number (halves
    /// to even).
    virtual float Width() = 0;
    /// The height, with the vertical factor.
    virtual float Height() = 0;
};

}  // namespace kwo::platform
