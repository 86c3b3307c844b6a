#pragma once

#include <cstdint>

#include "platform/geometry.h"
#include "platform/text.h"
#include "platform/values.h"

namespace kwo::platform {

/// Drawing on a device context that a host object hands out. A call that fails draws nothing and says nothing.
class Drawing {
public:
    static constexpr std::uint32_t kEdgeRaised = 5;
    static constexpr std::uint32_t kEdgeEtched = 6;
    static constexpr std::uint32_t kEdgeBump = 9;
    static constexpr std::uint32_t kEdgeSunken = 10;

    static constexpr std::uint32_t kScrollFrame = 3;  ///< DFC_SCROLL
    static constexpr std::uint32_t kScrollLeft = 2;
    static constexpr std::uint32_t kScrollRight = 3;
    static constexpr std::uint32_t kPushed = 0x200;

    virtual ~Drawing() = default;

    /// GetClientRect; `area` is left as it was when there is no such window.
    virtual void ClientRect(Handle window, Rect& area) = 0;
    virtual void DrawEdge(Handle context, const Rect& area, std::uint32_t edge, std::uint32_t flags) = 0;
    virtual void DrawFrameControl(Handle context, const Rect& area, std::uint32_t type, std::uint32_t state) = 0;
    /// DrawTextA, with the text's length in bytes.
    virtual void DrawText(Handle context, TextView text, const Rect& area, std::uint32_t format) = 0;
    virtual void DrawFocusRect(Handle context, const Rect& area) = 0;
    virtual void FrameRect(Handle context, const Rect& area, Handle brush) = 0;
    virtual Handle StockObject(std::int32_t which) = 0;
};

/// The whole screen as a surface to draw lines on, across all windows.
class ScreenDrawing {
public:
    virtual ~ScreenDrawing() = default;

    /// CreateDCA("DISPLAY"); 0 on failure.
    virtual Handle CreateDisplayContext() = 0;
    virtual void DeleteContext(Handle context) = 0;
    virtual Handle CreatePen(std::int32_t style, std::int32_t width, Colour colour) = 0;
    /// The mode before.
    virtual std::int32_t SetRasterOperation(Handle context, std::int32_t mode) = 0;
    /// The object that was selected before.
    virtual Handle SelectObject(Handle context, Handle object) = 0;
    virtual void DeleteObject(Handle object) = 0;
    virtual Handle StockObject(std::int32_t which) = 0;
    /// `point` is left as it was when there is no such window.
    virtual void ClientToScreen(Handle window, Point& point) = 0;
    virtual void MoveTo(Handle context, Point point) = 0;
    virtual void LineTo(Handle context, Point point) = 0;
};

}  // namespace kwo::platform
