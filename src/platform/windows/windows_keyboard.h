#pragma once

#include "platform/keyboard.h"
#include "platform/windows/context.h"

namespace kwo::platform::windows {

class WindowsKeyboard final : public Keyboard {
public:
    explicit WindowsKeyboard(Context& context) : mLastError(context.lastError) {}

    void SendTab(bool backwards) override;

private:
    LastError& mLastError;
};

}  // namespace kwo::platform::windows
