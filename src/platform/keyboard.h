#pragma once

#include <cstdint>

namespace kwo::platform {

/// The codes of keys as key events carry them: the system's virtual key codes.
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

/// Keys as if the user had pressed them.
class Keyboard {
public:
    virtual ~Keyboard() = default;

    /// The key that moves the focus to the next control, with Shift to the one before.
    virtual void SendTab(bool backwards) = 0;
};

}  // namespace kwo::platform
