#include "platform/windows/windows_screen.h"

#include <windows.h>

#include <cmath>

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

std::intptr_t WindowsScreen::MousePointer() {
    const HCURSOR pointer = ::GetCursor();
    if (pointer == nullptr) return kNoPointer;
    return pointer == ::LoadCursorW(nullptr, IDC_ARROW) ? 0 : reinterpret_cast<std::intptr_t>(pointer);
}

void WindowsScreen::SetMousePointer(std::intptr_t pointer) {
    if (pointer == kNoPointer) {
        ::SetCursor(nullptr);
    } else {
        ::SetCursor(pointer == 0 ? ::LoadCursorW(nullptr, IDC_ARROW) : reinterpret_cast<HCURSOR>(pointer));
    }
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
