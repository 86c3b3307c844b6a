#include "platform/simulated/simulated_screen_drawing.h"

#include <string>
#include <utility>

namespace kwo::platform::simulated {
namespace {

constexpr Handle kStockObjects = 1000;

std::string Shown(Point point) {
    return '(' + std::to_string(point.x) + ',' + std::to_string(point.y) + ')';
}

std::string On(std::string_view call, Handle handle) {
    return std::string(call) + ' ' + std::to_string(handle) + ' ';
}

}  // namespace

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
