#pragma once

#include "platform/drawing.h"
#include "platform/windows/last_error.h"

namespace kwo::platform::windows {

class WindowsDrawing final : public Drawing {
public:
    explicit WindowsDrawing(LastError& lastError) : mLastError(lastError) {}

    void ClientRect(Handle window, Rect& area) override;
    void DrawEdge(Handle context, const Rect& area, std::uint32_t edge, std::uint32_t flags) override;
    void DrawFrameControl(Handle context, const Rect& area, std::uint32_t type, std::uint32_t state) override;
    void DrawText(Handle context, TextView text, const Rect& area, std::uint32_t format) override;
    void DrawFocusRect(Handle context, const Rect& area) override;
    void FrameRect(Handle context, const Rect& area, Handle brush) override;
    Handle StockObject(std::int32_t which) override;

private:
    LastError& mLastError;
};

class WindowsScreenDrawing final : public ScreenDrawing {
public:
    explicit WindowsScreenDrawing(LastError& lastError) : mLastError(lastError) {}

    Handle CreateDisplayContext() override;
    void DeleteContext(Handle context) override;
    Handle CreatePen(std::int32_t style, std::int32_t width, Colour colour) override;
    std::int32_t SetRasterOperation(Handle context, std::int32_t mode) override;
    Handle SelectObject(Handle context, Handle object) override;
    void DeleteObject(Handle object) override;
    Handle StockObject(std::int32_t which) override;
    void ClientToScreen(Handle window, Point& point) override;
    void MoveTo(Handle context, Point point) override;
    void LineTo(Handle context, Point point) override;

private:
    LastError& mLastError;
};

}  // namespace kwo::platform::windows
