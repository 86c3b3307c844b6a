#pragma once

#include "platform/drawing.h"
#include "platform/windows/context.h"

namespace kwo::platform::windows {

/// The system's own drawing calls, which are named in Drawing.
/// Texts are drawn in the font, colour and background mode of the context.
/// A text is converted to the ANSI code page first. Some calls change the rectangle that they are given: they get a
/// copy.
class WindowsDrawing final : public Drawing {
public:
    explicit WindowsDrawing(Context& context) : mLastError(context.lastError) {}

    /// GetClientRect.
    void ClientRect(Handle window, Rect& area) override;
    void DrawEdge(Handle context, const Rect& area, std::uint32_t edge, std::uint32_t flags) override;
    void DrawFrameControl(Handle context, const Rect& area, std::uint32_t type, std::uint32_t state) override;
    /// DrawTextA, with the length in bytes.
    void DrawText(Handle context, TextView text, const Rect& area, std::uint32_t format) override;
    void DrawFocusRect(Handle context, const Rect& area) override;
    void FrameRect(Handle context, const Rect& area, Handle brush) override;
    Handle StockObject(std::int32_t which) override;

private:
    LastError& mLastError;
};

}  // namespace kwo::platform::windows
