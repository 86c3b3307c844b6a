#pragma once

#include <cstdint>

namespace kwo::platform {

/// The codes of keys as the host's key events carry them: the system's virtual key codes (VK_).
struct Key {
    static constexpr std::int16_t kEnter = 13;
    static constexpr std::int16_t kSpace = 32;
    static constexpr std::int16_t kPageUp = 33;
    static constexpr std::int16_t kPageDown = 34;
    static constexpr std::int16_t kLeft = 37;
    static constexpr std::int16_t kUp = 38;
    static constexpr std::int16_t kRight = 39;
    static constexpr std::int16_t kDown = 40;
};

/// Presses keys in place of the user.
class Keyboard {
public:
    virtual ~Keyboard() = default;

    /// Presses the Tab key, which moves the focus to the next control, or with `backwards` Shift+Tab, which moves it
    /// to the previous one.
    /// Keys that the user holds meanwhile (Shift, Ctrl, Alt, the logo key) do not count; they are down again
    /// afterwards.
    /// Returns before the focus has moved: the keys wait in the input queue. The program with the focus then receives
    /// them, whichever it is. If the system refuses the keys, nothing happens.
    virtual void SendTab(bool backwards) = 0;
};

}  // namespace kwo::platform
