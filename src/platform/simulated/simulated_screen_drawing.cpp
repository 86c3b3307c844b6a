#include "platform/simulated/simulated_screen_drawing.h"

#include <string>
#include <utility>

#include "platform/simulated/simulated_drawing.h"

namespace kwo::platform::simulated {
SimulatedScreenDrawing::SimulatedScreenDrawing(World& world) : mWorld(world) {
    world.faults.Declare({{"CreateDC", {8}},
                          {"DeleteDC", {}},
                          {"CreatePen", {8}},
                          {"SetROP2", {6}},
                          {"SelectObject", {6}},
                          {"DeleteObject", {}},
                          {"ClientToScreen", {1400}},
                          {"MoveTo", {6}},
                          {"LineTo", {6}}});
}

Handle SimulatedScreenDrawing::CreateDisplayContext() {
    const Call call(mWorld, "CreateDC");
    mWorld.log.Add("CreateDC DISPLAY");
    if (call.Fails()) return 0;
    mContexts[++mLastContext] = {};
    ++openContexts;
    return mLastContext;
}

void SimulatedScreenDrawing::DeleteContext(Handle context) {
    const Call call(mWorld, "DeleteDC");
    mWorld.log.Add("DeleteDC " + std::to_string(context));
    openContexts -= static_cast<int>(mContexts.erase(context));
}

Handle SimulatedScreenDrawing::CreatePen(std::int32_t style, std::int32_t width, Colour colour) {
    const Call call(mWorld, "CreatePen");
    mWorld.log.Add(On("CreatePen", style) + std::to_string(width) + ' ' + Hex(colour));
    if (call.Fails()) return 0;
    ++livePens;
    return ++mLastPen;
}

std::int32_t SimulatedScreenDrawing::SetRasterOperation(Handle context, std::int32_t mode) {
    const Call call(mWorld, "SetROP2");
    if (call.Fails()) return 0;
    mWorld.log.Add(On("SetROP2", context) + std::to_string(mode));
    const auto found = mContexts.find(context);
    return found == mContexts.end() ? 0 : std::exchange(found->second.rasterOperation, mode);
}

Handle SimulatedScreenDrawing::SelectObject(Handle context, Handle object) {
    const Call call(mWorld, "SelectObject");
    if (call.Fails()) return 0;
    mWorld.log.Add(On("SelectObject", context) + std::to_string(object));
    constexpr Handle kFirstStockPen = kStockObjects + 6;
    constexpr Handle kLastStockPen = kStockObjects + 8;
    const bool isPen = object > kFirstPen || (object >= kFirstStockPen && object <= kLastStockPen);
    const auto found = mContexts.find(context);
    if (found == mContexts.end()) return 0;
    return std::exchange(isPen ? found->second.pen : found->second.brush, object);
}

void SimulatedScreenDrawing::DeleteObject(Handle object) {
    const Call call(mWorld, "DeleteObject");
    mWorld.log.Add("DeleteObject " + std::to_string(object));
    if (object > kFirstPen) --livePens;
}

Handle SimulatedScreenDrawing::StockObject(std::int32_t which) {
    return kStockObjects + which;
}

void SimulatedScreenDrawing::ClientToScreen(Handle window, Point& point) {
    const Call call(mWorld, "ClientToScreen");
    if (call.Fails()) return;
    if (const auto found = origins.find(window); found != origins.end()) {
        point = {point.x + found->second.x, point.y + found->second.y};
    }
}

void SimulatedScreenDrawing::MoveTo(Handle context, Point point) {
    Go("MoveTo", context, point);
}

void SimulatedScreenDrawing::LineTo(Handle context, Point point) {
    Go("LineTo", context, point);
}

void SimulatedScreenDrawing::Go(std::string_view name, Handle context, Point point) {
    const Call call(mWorld, name);
    const auto found = mContexts.find(context);
    if (call.Fails() || found == mContexts.end()) return;
    mWorld.log.Add(On(name, context) + Shown(point));
    found->second.place = point;
}

}  // namespace kwo::platform::simulated
