#pragma once

namespace kwo::platform {

/// Keys as if the user had pressed them.
class Keyboard {
public:
    virtual ~Keyboard() = default;

    /// The key that moves the focus to the next control, with Shift to the one before.
    virtual void SendTab(bool backwards) = 0;
};

}  // namespace kwo::platform
