#include "platform/windows/windows_screen_drawing.h"

#include "platform/windows/handles.h"

namespace kwo::platform::windows {

Handle WindowsScreenDrawing::CreateDisplayContext() {
    return FromNative(mLastError.After(::CreateDCA("DISPLAY", nullptr, nullptr, nullptr)));
}

void WindowsScreenDrawing::DeleteContext(Handle context) {
    mLastError.After(::DeleteDC(ToNative<HDC>(context)));
}

Handle WindowsScreenDrawing::CreatePen(std::int32_t style, std::int32_t width, Colour colour) {
    return FromNative(mLastError.After(::CreatePen(style, width, colour)));
}

std::int32_t WindowsScreenDrawing::SetRasterOperation(Handle context, std::int32_t mode) {
    return mLastError.After(::SetROP2(ToNative<HDC>(context), mode));
}

Handle WindowsScreenDrawing::SelectObject(Handle context, Handle object) {
    return FromNative(mLastError.After(::SelectObject(ToNative<HDC>(context), ToNative<HGDIOBJ>(object))));
}

void WindowsScreenDrawing::DeleteObject(Handle object) {
    mLastError.After(::DeleteObject(ToNative<HGDIOBJ>(object)));
}

Handle WindowsScreenDrawing::StockObject(std::int32_t which) {
    return FromNative(mLastError.After(::GetStockObject(which)));
}

void WindowsScreenDrawing::ClientToScreen(Handle window, Point& point) {
    POINT converted = {point.x, point.y};
    if (mLastError.After(::ClientToScreen(ToNative<HWND>(window), &converted))) point = {converted.x, converted.y};
}

void WindowsScreenDrawing::MoveTo(Handle context, Point point) {
    mLastError.After(::MoveToEx(ToNative<HDC>(context), point.x, point.y, nullptr));
}

void WindowsScreenDrawing::LineTo(Handle context, Point point) {
    mLastError.After(::LineTo(ToNative<HDC>(context), point.x, point.y));
}

}  // namespace kwo::platform::windows
