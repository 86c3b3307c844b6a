#pragma once

#include <cstdint>

#include "platform/geometry.h"
#include "platform/text.h"
#include "platform/values.h"

namespace kwo::platform {

/// Draws on a device context that a host object supplies. All places are pixels. A call that fails draws nothing and
/// reports nothing.
class Drawing {
public:
    /// Edges of DrawEdge.
    static constexpr std::uint32_t kEdgeRaised = 5;
    static constexpr std::uint32_t kEdgeEtched = 6;
    static constexpr std::uint32_t kEdgeBump = 9;
    static constexpr std::uint32_t kEdgeSunken = 10;

    /// The type and the states of DrawFrameControl for the arrow of a scroll bar.
    static constexpr std::uint32_t kScrollFrame = 3;  ///< DFC_SCROLL
    static constexpr std::uint32_t kScrollLeft = 2;
    static constexpr std::uint32_t kScrollRight = 3;
    static constexpr std::uint32_t kPushed = 0x200;

    virtual ~Drawing() = default;

    /// Sets `area` to the client area of `window`, with left and top 0 (GetClientRect). Leaves it as it was if there is
    /// no such window.
    virtual void ClientRect(Handle window, Rect& area) = 0;
    /// Draws the edges of `area` and, with the right flag, its middle (DrawEdge). `edge` is one of the constants above,
    /// `flags` the system's BF_ flags.
    virtual void DrawEdge(Handle context, const Rect& area, std::uint32_t edge, std::uint32_t flags) = 0;
    /// Draws a part of the system's own controls (DrawFrameControl).
    virtual void DrawFrameControl(Handle context, const Rect& area, std::uint32_t type, std::uint32_t state) = 0;
    /// Draws `text` into `area` (DrawTextA). `format` is the system's DT_ flags. The text is passed in the ANSI code
    /// page.
    virtual void DrawText(Handle context, TextView text, const Rect& area, std::uint32_t format) = 0;
    /// Draws or removes the dotted focus frame: drawing it twice restores the picture.
    virtual void DrawFocusRect(Handle context, const Rect& area) = 0;
    /// Draws a frame of one pixel along the inside of `area`.
    virtual void FrameRect(Handle context, const Rect& area, Handle brush) = 0;
    /// One of the system's own pens, brushes or fonts (GetStockObject). It must not be deleted.
    virtual Handle StockObject(std::int32_t which) = 0;
};

}  // namespace kwo::platform
