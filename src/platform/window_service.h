#pragma once

#include <cstdint>

#include "platform/text.h"
#include "platform/values.h"

namespace kwo::platform {

/// Windows of the desktop, by their handles, and the box that asks the user. A call for a window that does not exist
/// does nothing and returns false or an empty text.
class WindowService {
public:
    virtual ~WindowService() = default;

    /// Whether there is such a window (IsWindow).
    virtual bool WindowExists(Handle window) = 0;
    /// Whether the window is minimised (IsIconic).
    virtual bool IsMinimised(Handle window) = 0;
    /// Flashes the window's caption and taskbar button: `invert` true changes their state, false restores it
    /// (FlashWindow).
    virtual void Flash(Handle window, bool invert) = 0;
    /// The title of the window, up to 254 characters, zero characters included (GetWindowTextA).
    virtual Text WindowText(Handle window) = 0;

    /// Shows a message box and returns the number of the button that was pressed; 0 if no box could be shown
    /// (MessageBoxA). Messages are processed until then. `style` is the system's MB_ flags; `owner` may be 0.
    virtual std::int32_t AskUser(Handle owner, TextView prompt, TextView title, std::uint32_t style) = 0;
};

}  // namespace kwo::platform
