#include "platform/windows/windows_window_service.h"

#include <windows.h>

#include "platform/windows/ansi.h"
#include "platform/windows/handles.h"

namespace kwo::platform::windows {

bool WindowsWindowService::WindowExists(Handle window) {
    return mLastError.After(::IsWindow(ToNative<HWND>(window))) != FALSE;
}

bool WindowsWindowService::IsMinimised(Handle window) {
    return mLastError.After(::IsIconic(ToNative<HWND>(window))) != FALSE;
}

void WindowsWindowService::Flash(Handle window, bool invert) {
    mLastError.After(::FlashWindow(ToNative<HWND>(window), invert));
}

Text WindowsWindowService::WindowText(Handle window) {
    // For a handle that is not a window, Wine returns what happens to lie on its stack.
    if (!::IsWindow(ToNative<HWND>(window))) {
        mLastError.Set(ERROR_INVALID_WINDOW_HANDLE);
        return {};
    }
    char buffer[255] = "";
    const int length = mLastError.After(::GetWindowTextA(ToNative<HWND>(window), buffer, sizeof buffer));
    return length > 0 ? FromBuffer(buffer, static_cast<std::size_t>(length)) : Text();
}

std::int32_t WindowsWindowService::AskUser(Handle owner, TextView prompt, TextView title, std::uint32_t style) {
    const int answer =
        mLastError.After(::MessageBoxA(ToNative<HWND>(owner), ToAnsi(prompt).c_str(), ToAnsi(title).c_str(), style));
    // If the box cannot be shown, Wine returns -1 and Windows 0.
    return answer < 0 ? 0 : answer;
}

}  // namespace kwo::platform::windows
