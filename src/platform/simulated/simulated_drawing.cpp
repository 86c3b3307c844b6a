#include "platform/simulated/simulated_drawing.h"

#include <string>

namespace kwo::platform::simulated {
SimulatedDrawing::SimulatedDrawing(World& world) : mWorld(world) {
    world.faults.Declare({{"GetClientRect", {1400}},
                          {"DrawEdge", {6}},
                          {"DrawFrameControl", {6}},
                          {"DrawText", {6, Faults::kNoMemory}},
                          {"DrawFocusRect", {6}},
                          {"FrameRect", {6}}});
}

void SimulatedDrawing::ClientRect(Handle window, Rect& area) {
    const Call call(mWorld, "GetClientRect");
    if (call.Fails()) return;
    if (const auto found = clientAreas.find(window); found != clientAreas.end()) area = found->second;
}

void SimulatedDrawing::DrawEdge(Handle context, const Rect& area, std::uint32_t edge, std::uint32_t flags) {
    const Call call(mWorld, "DrawEdge");
    if (call.Fails()) return;
    mWorld.log.Add(On("DrawEdge", context) + Shown(area) + ' ' + std::to_string(edge) + ' ' + Hex(flags));
}

void SimulatedDrawing::DrawFrameControl(Handle context, const Rect& area, std::uint32_t type, std::uint32_t state) {
    const Call call(mWorld, "DrawFrameControl");
    if (call.Fails()) return;
    mWorld.log.Add(On("DrawFrameControl", context) + Shown(area) + ' ' + std::to_string(type) + ' ' + Hex(state));
}

void SimulatedDrawing::DrawText(Handle context, TextView text, const Rect& area, std::uint32_t format) {
    const Call call(mWorld, "DrawText");
    if (call.Fails()) return;
    mWorld.log.Add(On("DrawText", context) + '"' + Shown(text) + "\" " + Shown(area) + ' ' + Hex(format));
}

void SimulatedDrawing::DrawFocusRect(Handle context, const Rect& area) {
    const Call call(mWorld, "DrawFocusRect");
    if (call.Fails()) return;
    mWorld.log.Add(On("DrawFocusRect", context) + Shown(area));
}

void SimulatedDrawing::FrameRect(Handle context, const Rect& area, Handle brush) {
    const Call call(mWorld, "FrameRect");
    if (call.Fails()) return;
    mWorld.log.Add(On("FrameRect", context) + Shown(area) + ' ' + std::to_string(brush));
}

Handle SimulatedDrawing::StockObject(std::int32_t which) {
    return kStockObjects + which;
}

}  // namespace kwo::platform::simulated
