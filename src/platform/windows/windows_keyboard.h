#pragma once

#include "platform/keyboard.h"
#include "platform/windows/context.h"

namespace kwo::platform::windows {

/// Puts the keys into the system's input (SendInput), where they mix with those of the user.
class WindowsKeyboard final : public Keyboard {
public:
    explicit WindowsKeyboard(Context& context) : mLastError(context.lastError) {}

    void SendTab(bool backwards) override;

private:
    LastError& mLastError;
};

}  // namespace kwo::platform::windows
