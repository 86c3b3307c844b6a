#include <windows.h>
// The system's headers have a macro of that name.
#undef DrawText

#include "platform/windows/ansi.h"
#include "platform/windows/handles.h"
#include "platform/windows/windows_drawing.h"

namespace kwo::platform::windows {

namespace {

RECT ToNative(const Rect& area) {
    return {area.left, area.top, area.right, area.bottom};
}

}  // namespace

void WindowsDrawing::ClientRect(Handle window, Rect& area) {
    RECT found;
    if (mLastError.After(::GetClientRect(ToNative<HWND>(window), &found))) {
        area = {found.left, found.top, found.right, found.bottom};
    }
}

void WindowsDrawing::DrawEdge(Handle context, const Rect& area, std::uint32_t edge, std::uint32_t flags) {
    RECT drawn = ToNative(area);
    mLastError.After(::DrawEdge(ToNative<HDC>(context), &drawn, edge, flags));
}

void WindowsDrawing::DrawFrameControl(Handle context, const Rect& area, std::uint32_t type, std::uint32_t state) {
    RECT drawn = ToNative(area);
    mLastError.After(::DrawFrameControl(ToNative<HDC>(context), &drawn, type, state));
}

void WindowsDrawing::DrawText(Handle context, TextView text, const Rect& area, std::uint32_t format) {
    const std::string bytes = ToAnsi(text);
    RECT drawn = ToNative(area);
    mLastError.After(
        ::DrawTextA(ToNative<HDC>(context), bytes.c_str(), static_cast<int>(bytes.size()), &drawn, format));
}

void WindowsDrawing::DrawFocusRect(Handle context, const Rect& area) {
    const RECT drawn = ToNative(area);
    mLastError.After(::DrawFocusRect(ToNative<HDC>(context), &drawn));
}

void WindowsDrawing::FrameRect(Handle context, const Rect& area, Handle brush) {
    const RECT drawn = ToNative(area);
    mLastError.After(::FrameRect(ToNative<HDC>(context), &drawn, ToNative<HBRUSH>(brush)));
}

Handle WindowsDrawing::StockObject(std::int32_t which) {
    return FromNative(mLastError.After(::GetStockObject(which)));
}

}  // namespace kwo::platform::windows
