#pragma once

#include "platform/screen_drawing.h"
#include "platform/windows/context.h"

namespace kwo::platform::windows {

/// The system's own drawing calls, which are named in ScreenDrawing.
class WindowsScreenDrawing final : public ScreenDrawing {
public:
    explicit WindowsScreenDrawing(Context& context) : mLastError(context.lastError) {}

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
