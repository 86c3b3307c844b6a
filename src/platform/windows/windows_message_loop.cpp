#include "platform/windows/windows_message_loop.h"

#include <windows.h>

namespace kwo::platform::windows {

bool WindowsMessageLoop::ProcessPending() {
    MSG message;
    while (::PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
        if (message.message == WM_QUIT) {
            ::PostQuitMessage(static_cast<int>(message.wParam));
            return false;
        }
        ::TranslateMessage(&message);
        ::DispatchMessageW(&message);
    }
    return true;
}

void WindowsMessageLoop::WaitForInputEx(std::uint32_t timeoutMs, std::uint32_t wakeMask, std::uint32_t flags) {
    mLastError.After(::MsgWaitForMultipleObjectsEx(0, nullptr, timeoutMs, wakeMask, flags));
}

void WindowsMessageLoop::WaitForInput(std::uint32_t timeoutMs, std::uint32_t wakeMask) {
    mLastError.After(::MsgWaitForMultipleObjects(0, nullptr, FALSE, timeoutMs, wakeMask));
}

}  // namespace kwo::platform::windows
