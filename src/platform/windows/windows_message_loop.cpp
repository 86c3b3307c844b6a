#include "platform/windows/windows_message_loop.h"

#include <windows.h>

#include <utility>

namespace kwo::platform::windows {

bool WindowsMessageLoop::ProcessPending() {
    // A program may get messages faster than it handles them. The waits of the component end all the same.
    constexpr DWORD kLongestMs = 50;
    const DWORD begun = ::GetTickCount();
    mHasMore = false;
    MSG message;
    while (::PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
        if (message.message == WM_QUIT) {
            ::PostQuitMessage(static_cast<int>(message.wParam));
            return false;
        }
        ::TranslateMessage(&message);
        ::DispatchMessageW(&message);
        if (::GetTickCount() - begun >= kLongestMs) {
            mHasMore = ::PeekMessageW(&message, nullptr, 0, 0, PM_NOREMOVE) != FALSE;
            break;
        }
    }
    return true;
}

void WindowsMessageLoop::WaitForInputEx(std::uint32_t timeoutMs, std::uint32_t wakeMask, std::uint32_t flags) {
    if (std::exchange(mHasMore, false)) return;
    mLastError.After(::MsgWaitForMultipleObjectsEx(0, nullptr, timeoutMs, wakeMask, flags));
}

void WindowsMessageLoop::WaitForInput(std::uint32_t timeoutMs, std::uint32_t wakeMask) {
    if (std::exchange(mHasMore, false)) return;
    mLastError.After(::MsgWaitForMultipleObjects(0, nullptr, FALSE, timeoutMs, wakeMask));
}

}  // namespace kwo::platform::windows
