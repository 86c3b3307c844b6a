#pragma once

#include <cstdint>

#include "platform/geometry.h"
#include "platform/text.h"
#include "platform/values.h"

namespace kwo::platform {

/// Draws on a device context that a host object supplies, for example the hDC of a picture box.
///
///     Rect area;
///     drawing.ClientRect(box.Window(), area);
///     drawing.DrawEdge(box.Context(), area, Drawing::kEdgeRaised, 15);  // all four sides
///
/// All places are pixels of the context. The host owns the context; the service keeps nothing between two calls.
/// What is drawn shows on the screen at once or after the host's next Refresh, as the host decides.
/// A call that fails draws nothing and raises nothing but lack of memory; only the last-error value tells.
class Drawing {
public:
    /// The edges of DrawEdge, as the system numbers them (EDGE_).
    static constexpr std::uint32_t kEdgeRaised = 5;
    static constexpr std::uint32_t kEdgeEtched = 6;
    static constexpr std::uint32_t kEdgeBump = 9;
    static constexpr std::uint32_t kEdgeSunken = 10;

    /// The type of DrawFrameControl for a scroll bar (DFC_SCROLL), and the states that draw its arrows: which arrow,
    /// and pressed or not.
    static constexpr std::uint32_t kScrollFrame = 3;
    /// Which arrow, and whether it is pressed; add the two.
    static constexpr std::uint32_t kScrollLeft = 2;
    static constexpr std::uint32_t kScrollRight = 3;
    static constexpr std::uint32_t kPushed = 0x200;

    virtual ~Drawing() = default;

    /// Sets `area` to the client area of `window`, with left and top 0 (GetClientRect).
    /// Leaves `area` as it was if there is no such window, so fill it first.
    virtual void ClientRect(Handle window, Rect& area) = 0;
    /// Draws the edges of `area` inside it and, with BF_MIDDLE, fills its middle (DrawEdge).
    /// `edge` is one of the constants above, `flags` the system's BF_ numbers.
    virtual void DrawEdge(Handle context, const Rect& area, std::uint32_t edge, std::uint32_t flags) = 0;
    /// Draws a part of the system's own controls, stretched to `area` (DrawFrameControl).
    /// `type` is a DFC_ number, `state` DFCS_ numbers.
    virtual void DrawFrameControl(Handle context, const Rect& area, std::uint32_t type, std::uint32_t state) = 0;
    /// Draws `text` into `area` in the font and colours of the context (DrawTextA).
    /// `format` is the system's DT_ numbers, which also say whether the text is cut at the edges and what "&" means.
    /// The text is passed in the ANSI code page with its length, so zero characters do not end it.
    virtual void DrawText(Handle context, TextView text, const Rect& area, std::uint32_t format) = 0;
    /// Draws or removes the dotted focus frame. The dots are inverted: drawing it twice restores the picture.
    virtual void DrawFocusRect(Handle context, const Rect& area) = 0;
    /// Draws a frame of one pixel along the inside of `area`, in the colour of `brush`.
    virtual void FrameRect(Handle context, const Rect& area, Handle brush) = 0;
    /// One of the system's own pens, brushes or fonts (GetStockObject); 0 for an unknown number.
    /// The system owns it: it must not be deleted.
    virtual Handle StockObject(std::int32_t which) = 0;
};

}  // namespace kwo::platform
