#pragma once

#include <cstdint>

#include "platform/text.h"
#include "platform/values.h"

namespace kwo::platform {

/// Windows of the desktop, by handle, and the box that asks the user.
class Desktop {
public:
    virtual ~Desktop() = default;

    virtual bool WindowExists(Handle window) = 0;
    virtual bool IsMinimised(Handle window) = 0;
    virtual void Flash(Handle window, bool invert) = 0;
    /// GetWindowTextA with a buffer of 255 characters: what was written, zero characters included.
    virtual Text WindowText(Handle window) = 0;

    /// MessageBoxA: the number of the button pressed, 0 when no box could be shown.
    virtual std::int32_t AskUser(Handle owner, TextView prompt, TextView title, std::uint32_t style) = 0;
};

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
