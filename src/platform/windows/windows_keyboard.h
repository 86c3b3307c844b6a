#pragma once

#include "platform/keyboard.h"
#include "platform/windows/last_error.h"

namespace kwo::platform::windows {

class WindowsKeyboard final : public Keyboard {
public:
    explicit WindowsKeyboard(LastError& lastError) : mLastError(lastError) {}

    void SendTab(bool backwards) override;

private:
    LastError& mLastError;
};

}  // namespace kwo::platform::windows
