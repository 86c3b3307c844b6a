#pragma once

#include <cstdint>

#include "platform/text.h"
#include "platform/values.h"

namespace kwo::platform {

/// Windows of the desktop, by their handles, and the box that asks the user.
/// The windows may belong to any program.
///
/// A call for a window that does not exist does nothing and returns false or an empty text. No call raises anything
/// but lack of memory.
class WindowService {
public:
    virtual ~WindowService() = default;

    /// Whether there is such a window (IsWindow); false for 0.
    /// It may be gone a moment later, and its handle may mean another window then.
    virtual bool WindowExists(Handle window) = 0;
    /// Whether the window is minimised (IsIconic).
    virtual bool IsMinimised(Handle window) = 0;
    /// Flashes the window's caption and taskbar button once: `invert` true changes their state, false restores it
    /// (FlashWindow).
    /// Call it again and again for a window that blinks.
    virtual void Flash(Handle window, bool invert) = 0;
    /// The title of the window, up to 254 characters, zero characters included (GetWindowTextA).
    /// A window of this program is asked by a message, so its code runs.
    virtual Text WindowText(Handle window) = 0;

    /// Shows a message box and returns the number of the button that was pressed: 1 OK, 2 Cancel, 3 Abort, 4 Retry, 5
    /// Ignore, 6 Yes, 7 No.
    /// 0 if no box could be shown (MessageBoxA); the last-error value then says why.
    /// Messages are processed until then: timers and events of the host run meanwhile.
    /// `style` is the system's MB_ numbers. `owner` may be 0; a window that does not exist is a failure. Both texts
    /// end at their first zero character.
    virtual std::int32_t AskUser(Handle owner, TextView prompt, TextView title, std::uint32_t style) = 0;
};

}  // namespace kwo::platform
