#pragma once

namespace kwo::platform {

/// The button of the user's mouse that acts as the left one.
class Mouse {
public:
    virtual ~Mouse() = default;

    /// Whether the user holds the button at this moment, whatever has become of its messages.
    virtual bool IsHeld() = 0;
    /// Whether the messages that this thread has taken from its queue so far leave the button down.
    virtual bool WasPressed() = 0;
};

}  // namespace kwo::platform
