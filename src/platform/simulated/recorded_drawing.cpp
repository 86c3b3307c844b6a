#include "platform/simulated/recorded_drawing.h"

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

RecordedDrawing::RecordedDrawing(World& world) : mWorld(world) {
    world.faults.Declare({"GetClientRect"});
}

void RecordedDrawing::ClientRect(Handle window, Rect& area) {
    if (mWorld.Fails("GetClientRect")) return;
    if (const auto found = clientAreas.find(window); found != clientAreas.end()) area = found->second;
}

void RecordedDrawing::DrawEdge(Handle context, const Rect& area, std::uint32_t edge, std::uint32_t flags) {
    mWorld.log.Add(On("DrawEdge", context) + Shown(area) + ' ' + std::to_string(edge) + ' ' + Hex(flags));
}

void RecordedDrawing::DrawFrameControl(Handle context, const Rect& area, std::uint32_t type, std::uint32_t state) {
    mWorld.log.Add(On("DrawFrameControl", context) + Shown(area) + ' ' + std::to_string(type) + ' ' + Hex(state));
}

void RecordedDrawing::DrawText(Handle context, TextView text, const Rect& area, std::uint32_t format) {
    mWorld.log.Add(On("DrawText", context) + '"' + simulated::Shown(text) + "\" " + Shown(area) + ' ' + Hex(format));
}

void RecordedDrawing::DrawFocusRect(Handle context, const Rect& area) {
    mWorld.log.Add(On("DrawFocusRect", context) + Shown(area));
}

void RecordedDrawing::FrameRect(Handle context, const Rect& area, Handle brush) {
    mWorld.log.Add(On("FrameRect", context) + Shown(area) + ' ' + std::to_string(brush));
}

Handle RecordedDrawing::StockObject(std::int32_t which) {
    return kStockObjects + which;
}

RecordedScreenDrawing::RecordedScreenDrawing(World& world) : mWorld(world) {
    world.faults.Declare({"CreateDC", "CreatePen", "ClientToScreen"});
}

Handle RecordedScreenDrawing::CreateDisplayContext() {
    mWorld.log.Add("CreateDC DISPLAY");
    if (mWorld.Fails("CreateDC")) return 0;
    mContexts[++mLastContext] = {};
    ++openContexts;
    return mLastContext;
}

void RecordedScreenDrawing::DeleteContext(Handle context) {
    mWorld.log.Add("DeleteDC " + std::to_string(context));
    openContexts -= static_cast<int>(mContexts.erase(context));
}

Handle RecordedScreenDrawing::CreatePen(std::int32_t style, std::int32_t width, Colour colour) {
    mWorld.log.Add(On("CreatePen", style) + std::to_string(width) + ' ' + Hex(colour));
    if (mWorld.Fails("CreatePen")) return 0;
    ++livePens;
    return ++mLastPen;
}

std::int32_t RecordedScreenDrawing::SetRasterOperation(Handle context, std::int32_t mode) {
    mWorld.log.Add(On("SetROP2", context) + std::to_string(mode));
    return std::exchange(mContexts[context].rasterOperation, mode);
}

Handle RecordedScreenDrawing::SelectObject(Handle context, Handle object) {
    mWorld.log.Add(On("SelectObject", context) + std::to_string(object));
    constexpr Handle kFirstStockPen = kStockObjects + 6;
    constexpr Handle kLastStockPen = kStockObjects + 8;
    const bool isPen = object > kFirstPen || (object >= kFirstStockPen && object <= kLastStockPen);
    Context& drawn = mContexts[context];
    return std::exchange(isPen ? drawn.pen : drawn.brush, object);
}

void RecordedScreenDrawing::DeleteObject(Handle object) {
    mWorld.log.Add("DeleteObject " + std::to_string(object));
    if (object > kFirstPen) --livePens;
}

Handle RecordedScreenDrawing::StockObject(std::int32_t which) {
    return kStockObjects + which;
}

void RecordedScreenDrawing::ClientToScreen(Handle window, Point& point) {
    if (mWorld.Fails("ClientToScreen")) return;
    if (const auto found = origins.find(window); found != origins.end()) {
        point = {point.x + found->second.x, point.y + found->second.y};
    }
}

void RecordedScreenDrawing::MoveTo(Handle context, Point point) {
    mWorld.log.Add(On("MoveTo", context) + Shown(point));
}

void RecordedScreenDrawing::LineTo(Handle context, Point point) {
    mWorld.log.Add(On("LineTo", context) + Shown(point));
}

}  // namespace kwo::platform::simulated
