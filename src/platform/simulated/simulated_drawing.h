#pragma once

#include <map>

#include "platform/drawing.h"
#include "platform/simulated/world.h"

namespace kwo::platform::simulated {

/// The handle of the first stock object; the others follow.
constexpr Handle kStockObjects = 1000;

/// Drawing that is recorded in the log, one line a call: `DrawEdge 77 (4,4,23,23) 5 0x180F` is the context, the area,
/// the edge and the flags.
/// Calls that can fail are named as in Drawing; a call that fails leaves no line. Every context is accepted.
class SimulatedDrawing final : public Drawing {
public:
    explicit SimulatedDrawing(World& world);

    void ClientRect(Handle window, Rect& area) override;
    void DrawEdge(Handle context, const Rect& area, std::uint32_t edge, std::uint32_t flags) override;
    void DrawFrameControl(Handle context, const Rect& area, std::uint32_t type, std::uint32_t state) override;
    void DrawText(Handle context, TextView text, const Rect& area, std::uint32_t format) override;
    void DrawFocusRect(Handle context, const Rect& area) override;
    void FrameRect(Handle context, const Rect& area, Handle brush) override;
    /// 1000 and the number of the object.
    Handle StockObject(std::int32_t which) override;

    /// The client areas of the existing windows, by handle.
    std::map<Handle, Rect> clientAreas;

private:
    World& mWorld;
};

}  // namespace kwo::platform::simulated
