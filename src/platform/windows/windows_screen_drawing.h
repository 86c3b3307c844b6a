#pragma once

#include "platform/screen_drawing.h"
#include "platform/windows/context.h"

namespace kwo::platform::windows {

/// The system's own drawing calls, which are named in ScreenDrawing.
/// On a system that composes windows, a line may be lost when a window below it draws anew.
class WindowsScreenDrawing final : public ScreenDrawing {
public:
    explicit WindowsScreenDrawing(Context& context) : mLastError(context.lastError) {}

    /// CreateDCA "DISPLAY": the whole desktop, all monitors.
    Handle CreateDisplayContext() override;
    /// DeleteDC.
    void DeleteContext(Handle context) override;
    /// CreatePen. With an inverting mode the colour does not matter.
    Handle CreatePen(std::int32_t style, std::int32_t width, Colour colour) override;
    std::int32_t SetRasterOperation(Handle context, std::int32_t mode) override;
    Handle SelectObject(Handle context, Handle object) override;
    void DeleteObject(Handle object) override;
    Handle StockObject(std::int32_t which) override;
    /// Keeps `point` if the system refuses.
    void ClientToScreen(Handle window, Point& point) override;
    void MoveTo(Handle context, Point point) override;
    void LineTo(Handle context, Point point) override;

private:
    LastError& mLastError;
};

}  // namespace kwo::platform::windows
