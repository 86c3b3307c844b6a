#pragma once

#include <cstdint>

#include "platform/geometry.h"
#include "platform/values.h"

namespace kwo::platform {

/// Draws lines on the whole screen, across all windows. All places are pixels of the screen. A call that fails draws
/// nothing and reports nothing.
class ScreenDrawing {
public:
    virtual ~ScreenDrawing() = default;

    /// A device context for the whole screen (CreateDCA "DISPLAY"); 0 on failure. The caller deletes it with
    /// DeleteContext.
    virtual Handle CreateDisplayContext() = 0;
    /// Ends a context of CreateDisplayContext.
    virtual void DeleteContext(Handle context) = 0;
    /// A pen; 0 on failure. `style` is the system's PS_ number, `width` in pixels. The caller deletes it with
    /// DeleteObject, after it has selected another pen.
    virtual Handle CreatePen(std::int32_t style, std::int32_t width, Colour colour) = 0;
    /// Sets how lines combine with the screen (SetROP2), and returns the mode before.
    virtual std::int32_t SetRasterOperation(Handle context, std::int32_t mode) = 0;
    /// Makes a pen or brush the current one, and returns the one before.
    virtual Handle SelectObject(Handle context, Handle object) = 0;
    /// Deletes a pen of CreatePen.
    virtual void DeleteObject(Handle object) = 0;
    /// As Drawing::StockObject.
    virtual Handle StockObject(std::int32_t which) = 0;
    /// Converts a point of the window's client area to a point of the screen. Leaves it as it was if there is no such
    /// window.
    virtual void ClientToScreen(Handle window, Point& point) = 0;
    /// Sets where the next line begins.
    virtual void MoveTo(Handle context, Point point) = 0;
    /// Draws a line from there to `point`, which is itself not drawn.
    virtual void LineTo(Handle context, Point point) = 0;
};

}  // namespace kwo::platform
