#pragma once

#include <cstdint>

#include "platform/values.h"

namespace kwo::platform {

/// What the host's screen object tells and accepts: the pointer, the active form and its help, and how large the
/// screen is.
class Screen {
public:
    /// What MousePointer returns while the pointer is hidden.
    static constexpr std::intptr_t kNoPointer = -1;

    virtual ~Screen() = default;

    /// The shape of the pointer, as an opaque value; 0 is the default arrow, kNoPointer is none.
    /// It is as wide as a pointer and belongs to the system.
    virtual std::intptr_t MousePointer() = 0;
    /// Sets the shape of the pointer: 0, or a value of MousePointer.
    /// The next movement over a window may change it again.
    virtual void SetMousePointer(std::intptr_t pointer) = 0;
    /// The active window of the calling thread; 0 if the thread has none, for example while another program is in
    /// front.
    virtual Handle ActiveForm() = 0;
    /// The number of the help topic of a form; 0 if it has none or there is no such window.
    virtual std::int32_t HelpContext(Handle form) = 0;
    /// Sets the number of the help topic of a form. Nothing happens if there is no such window.
    virtual void SetHelpContext(Handle form, std::int32_t context) = 0;
    /// 1440 divided by the logical dots per inch of the display; 15 if the display tells none.
    /// It may be a fraction: 7.5 at 192 dots per inch. Forms and controls count with whole numbers, see TwipsPerPixel.
    virtual double TwipsPerPixelX() = 0;
    /// The same for the vertical axis.
    virtual double TwipsPerPixelY() = 0;
    /// The width of the whole primary screen in twips, the taskbar included: pixels times the factor above, after that
    /// has been rounded to a whole number (halves to even).
    virtual float Width() = 0;
    /// The height, with the vertical factor.
    virtual float Height() = 0;
};

}  // namespace kwo::platform
