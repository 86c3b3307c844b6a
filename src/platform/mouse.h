#pragma once

namespace kwo::platform {

/// The button of the user's mouse that acts as the left one, also if the user has swapped the buttons.
/// Raises nothing and leaves the last-error value alone.
class Mouse {
public:
    virtual ~Mouse() = default;

    /// Whether the user holds the button down now (GetAsyncKeyState). Messages about it may still be on their way.
    virtual bool IsHeld() = 0;
    /// Whether the button is down after the messages that this thread has taken from its queue so far (GetKeyState).
    /// A release that waits in the queue does not count yet.
    virtual bool WasPressed() = 0;
};

}  // namespace kwo::platform
