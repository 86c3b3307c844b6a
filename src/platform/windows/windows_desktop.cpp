#include "platform/windows/windows_desktop.h"

#include <windows.h>

#include <cmath>

#include "platform/windows/ansi.h"
#include "platform/windows/handles.h"

namespace kwo::platform::windows {

namespace {

double TwipsPerPixel(int axis) {
    constexpr double kTwipsPerInch = 1440;
    constexpr double kUsual = 15;
    const HDC screen = ::GetDC(nullptr);
    const int dotsPerInch = screen != nullptr ? ::GetDeviceCaps(screen, axis) : 0;
    if (screen != nullptr) ::ReleaseDC(nullptr, screen);
    return dotsPerInch > 0 ? kTwipsPerInch / dotsPerInch : kUsual;
}

}  // namespace

bool WindowsDesktop::WindowExists(Handle window) {
    return mLastError.After(::IsWindow(ToNative<HWND>(window))) != FALSE;
}

bool WindowsDesktop::IsMinimised(Handle window) {
    return mLastError.After(::IsIconic(ToNative<HWND>(window))) != FALSE;
}

void WindowsDesktop::Flash(Handle window, bool invert) {
    mLastError.After(::FlashWindow(ToNative<HWND>(window), invert));
}

Text WindowsDesktop::WindowText(Handle window) {
    // Wine answers for a handle that is no window with what happens to lie on its stack.
    if (!::IsWindow(ToNative<HWND>(window))) {
        mLastError.Set(ERROR_INVALID_WINDOW_HANDLE);
        return {};
    }
    char buffer[255] = "";
    const int length = mLastError.After(::GetWindowTextA(ToNative<HWND>(window), buffer, sizeof buffer));
    return length > 0 ? FromBuffer(buffer, static_cast<std::size_t>(length)) : Text();
}

std::int32_t WindowsDesktop::AskUser(Handle owner, TextView prompt, TextView title, std::uint32_t style) {
    const int answer =
        mLastError.After(::MessageBoxA(ToNative<HWND>(owner), ToAnsi(prompt).c_str(), ToAnsi(title).c_str(), style));
    // Wine answers -1 where Windows answers 0 for a box that it could not show.
    return answer < 0 ? 0 : answer;
}

std::intptr_t WindowsScreen::MousePointer() {
    const HCURSOR pointer = ::GetCursor();
    return pointer == ::LoadCursorW(nullptr, IDC_ARROW) ? 0 : reinterpret_cast<std::intptr_t>(pointer);
}

void WindowsScreen::SetMousePointer(std::intptr_t pointer) {
    ::SetCursor(pointer == 0 ? ::LoadCursorW(nullptr, IDC_ARROW) : reinterpret_cast<HCURSOR>(pointer));
}

Handle WindowsScreen::ActiveForm() {
    return FromNative(::GetActiveWindow());
}

std::int32_t WindowsScreen::HelpContext(Handle form) {
    return static_cast<std::int32_t>(::GetWindowContextHelpId(ToNative<HWND>(form)));
}

void WindowsScreen::SetHelpContext(Handle form, std::int32_t context) {
    ::SetWindowContextHelpId(ToNative<HWND>(form), static_cast<DWORD>(context));
}

double WindowsScreen::TwipsPerPixelX() {
    return TwipsPerPixel(LOGPIXELSX);
}

double WindowsScreen::TwipsPerPixelY() {
    return TwipsPerPixel(LOGPIXELSY);
}

float WindowsScreen::Width() {
    return static_cast<float>(::GetSystemMetrics(SM_CXSCREEN) * std::nearbyint(TwipsPerPixelX()));
}

float WindowsScreen::Height() {
    return static_cast<float>(::GetSystemMetrics(SM_CYSCREEN) * std::nearbyint(TwipsPerPixelY()));
}

}  // namespace kwo::platform::windows
