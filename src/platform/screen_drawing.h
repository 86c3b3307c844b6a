#pragma once

#include <cstdint>

#include "platform/geometry.h"
#include "platform/values.h"

namespace kwo::platform {

/// Draws lines on the whole screen, across all windows.
/// The splitter draws with it the line that follows the mouse.
///
///     const Handle context = screen.CreateDisplayContext();
///     screen.SetRasterOperation(context, 6);  // R2_NOT: inverts
///     screen.MoveTo(context, start);
///     screen.LineTo(context, end);
///     screen.DeleteContext(context);
///
/// All places are pixels of the screen. What is drawn stays until something else draws there: a line drawn with an
/// inverting mode is removed by drawing it again.
/// A call that fails draws nothing and raises nothing; only its result and the last-error value tell.
class ScreenDrawing {
public:
    virtual ~ScreenDrawing() = default;

    /// A device context for the whole screen (CreateDCA "DISPLAY"); 0 on failure.
    /// The caller deletes it with DeleteContext.
    virtual Handle CreateDisplayContext() = 0;
    /// Ends a context of CreateDisplayContext.
    /// Select the pens and brushes of before first, so that the context holds none of the caller's.
    virtual void DeleteContext(Handle context) = 0;
    /// A pen; 0 on failure.
    /// `style` is the system's PS_ number, `width` in pixels.
    /// The caller deletes it with DeleteObject, after it has selected another pen.
    virtual Handle CreatePen(std::int32_t style, std::int32_t width, Colour colour) = 0;
    /// Sets how lines combine with the screen, an R2_ number (SetROP2). Returns the mode before, 0 on failure.
    virtual std::int32_t SetRasterOperation(Handle context, std::int32_t mode) = 0;
    /// Makes a pen or brush the current one of the context.
    /// Returns the one before, 0 on failure.
    /// The caller keeps the ownership.
    virtual Handle SelectObject(Handle context, Handle object) = 0;
    /// Deletes a pen of CreatePen. It must not be selected in any context.
    virtual void DeleteObject(Handle object) = 0;
    /// As Drawing::StockObject: one of the system's own pens or brushes, which must not be deleted.
    virtual Handle StockObject(std::int32_t which) = 0;
    /// Converts a point of the window's client area to a point of the screen.
    /// Leaves `point` as it was if there is no such window.
    virtual void ClientToScreen(Handle window, Point& point) = 0;
    /// Sets where the next line begins.
    virtual void MoveTo(Handle context, Point point) = 0;
    /// Draws a line from there to `point`, which is itself not drawn. The next line begins at `point`.
    virtual void LineTo(Handle context, Point point) = 0;
};

}  // namespace kwo::platform
