#pragma once

#include "platform/keyboard.h"
#include "platform/windows/context.h"

namespace kwo::platform::windows {

/// Puts the keys into the system's input (SendInput), where they mix with those of the user.
/// The system refuses keys for a program with more rights.
/// Modifier keys that the user holds are released first and pressed again afterwards. A key without meaning follows
/// them, so that releasing Alt or the logo key opens no menu.
class WindowsKeyboard final : public Keyboard {
public:
    explicit WindowsKeyboard(Context& context) : mLastError(context.lastError) {}

    /// All keys go in one call, so that no key of the user comes between them.
    void SendTab(bool backwards) override;

private:
    LastError& mLastError;
};

}  // namespace kwo::platform::windows
