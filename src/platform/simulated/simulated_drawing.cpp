#include "platform/simulated/simulated_drawing.h"

#include <string>
#include <utility>

namespace kwo::platform::simulated {
namespace {

constexpr Handle kStockObjects = 1000;

std::string Shown(const Rect& area) {
    return '(' + std::to_string(area.left) + ',' + std::to_string(area.top) + ',' + std::to_string(area.right) + ',' +
           std::to_string(area.bottom) + ')';
}

std::string Shown(Point point) {
    return '(' + std::to_string(point.x) + ',' + std::to_string(point.y) + ')';
}

std::string On(std::string_view call, Handle handle) {
    return std::string(call) + ' ' + std::to_string(handle) + ' ';
}

}  // namespace

SimulatedDrawing::SimulatedDrawing(World& world) : mWorld(world) {
    world.faults.Declare({"GetClientRect"});
}

void SimulatedDrawing::ClientRect(Handle window, Rect& area) {
    if (mWorld.Fails("GetClientRect")) return;
    if (const auto found = clientAreas.find(window); found != clientAreas.end()) area = found->second;
}

void SimulatedDrawing::DrawEdge(Handle context, const Rect& area, std::uint32_t edge, std::uint32_t flags) {
    mWorld.log.Add(On("DrawEdge", context) + Shown(area) + ' ' + std::to_string(edge) + ' ' + Hex(flags));
}

void SimulatedDrawing::DrawFrameControl(Handle context, const Rect& area, std::uint32_t type, std::uint32_t state) {
    mWorld.log.Add(On("DrawFrameControl", context) + Shown(area) + ' ' + std::to_string(type) + ' ' + Hex(state));
}

void SimulatedDrawing::DrawText(Handle context, TextView text, const Rect& area, std::uint32_t format) {
    mWorld.log.Add(On("DrawText", context) + '"' + simulated::Shown(text) + "\" " + Shown(area) + ' ' + Hex(format));
}

void SimulatedDrawing::DrawFocusRect(Handle context, const Rect& area) {
    mWorld.log.Add(On("DrawFocusRect", context) + Shown(area));
}

void SimulatedDrawing::FrameRect(Handle context, const Rect& area, Handle brush) {
    mWorld.log.Add(On("FrameRect", context) + Shown(area) + ' ' + std::to_string(brush));
}

Handle SimulatedDrawing::StockObject(std::int32_t which) {
    return kStockObjects + which;
}

SimulatedScreenDrawing::SimulatedScreenDrawing(World& world) : mWorld(world) {
    world.faults.Declare({"CreateDC", "CreatePen", "ClientToScreen"});
}

Handle SimulatedScreenDrawing::CreateDisplayContext() {
    mWorld.log.Add("CreateDC DISPLAY");
    if (mWorld.Fails("CreateDC")) return 0;
    mContexts[++mLastContext] = {};
    ++openContexts;
    return mLastContext;
}

void SimulatedScreenDrawing::DeleteContext(Handle context) {
    mWorld.log.Add("DeleteDC " + std::to_string(context));
    openContexts -= static_cast<int>(mContexts.erase(context));
}

Handle SimulatedScreenDrawing::CreatePen(std::int32_t style, std::int32_t width, Colour colour) {
    mWorld.log.Add(On("CreatePen", style) + std::to_string(width) + ' ' + Hex(colour));
    if (mWorld.Fails("CreatePen")) return 0;
    ++livePens;
    return ++mLastPen;
}

std::int32_t SimulatedScreenDrawing::SetRasterOperation(Handle context, std::int32_t mode) {
    mWorld.log.Add(On("SetROP2", context) + std::to_string(mode));
    return std::exchange(mContexts[context].rasterOperation, mode);
}

Handle SimulatedScreenDrawing::SelectObject(Handle context, Handle object) {
    mWorld.log.Add(On("SelectObject", context) + std::to_string(object));
    constexpr Handle kFirstStockPen = kStockObjects + 6;
    constexpr Handle kLastStockPen = kStockObjects + 8;
    const bool isPen = object > kFirstPen || (object >= kFirstStockPen && object <= kLastStockPen);
    Context& drawn = mContexts[context];
    return std::exchange(isPen ? drawn.pen : drawn.brush, object);
}

void SimulatedScreenDrawing::DeleteObject(Handle object) {
    mWorld.log.Add("DeleteObject " + std::to_string(object));
    if (object > kFirstPen) --livePens;
}

Handle SimulatedScreenDrawing::StockObject(std::int32_t which) {
    return kStockObjects + which;
}

void SimulatedScreenDrawing::ClientToScreen(Handle window, Point& point) {
    if (mWorld.Fails("ClientToScreen")) return;
    if (const auto found = origins.find(window); found != origins.end()) {
        point = {point.x + found->second.x, point.y + found->second.y};
    }
}

void SimulatedScreenDrawing::MoveTo(Handle context, Point point) {
    mWorld.log.Add(On("MoveTo", context) + Shown(point));
}

void SimulatedScreenDrawing::LineTo(Handle context, Point point) {
    mWorld.log.Add(On("LineTo", context) + Shown(point));
}

}  // namespace kwo::platform::simulated
