#pragma once

#include <map>
#include <string_view>

#include "platform/screen_drawing.h"
#include "platform/simulated/world.h"

namespace kwo::platform::simulated {

/// Lines across the screen, recorded as `LineTo 1 (40,200)`.
/// Contexts and pens are counted to find those that were not given back.
/// Calls that can fail: CreateDC, CreatePen, SetROP2, SelectObject, ClientToScreen, MoveTo and LineTo.
class SimulatedScreenDrawing final : public ScreenDrawing {
public:
    static constexpr Handle kFirstPen = 0x2000;

    explicit SimulatedScreenDrawing(World& world);

    /// 1, 2, ... for each context made.
    Handle CreateDisplayContext() override;
    void DeleteContext(Handle context) override;
    Handle CreatePen(std::int32_t style, std::int32_t width, Colour colour) override;
    std::int32_t SetRasterOperation(Handle context, std::int32_t mode) override;
    Handle SelectObject(Handle context, Handle object) override;
    void DeleteObject(Handle object) override;
    /// 1000 and the number of the object.
    Handle StockObject(std::int32_t which) override;
    void ClientToScreen(Handle window, Point& point) override;
    void MoveTo(Handle context, Point point) override;
    void LineTo(Handle context, Point point) override;

    /// Where the next line of a context begins.
    Point Place(Handle context) const { return mContexts.at(context).place; }

    /// The places of the windows' client areas on the screen, by handle.
    std::map<Handle, Point> origins;
    /// Contexts that were made and not deleted.
    int openContexts = 0;
    /// Pens that were made and not deleted.
    int livePens = 0;

private:
    struct Context {
        std::int32_t rasterOperation = 13;  ///< R2_COPYPEN
        Handle pen = 1007;                  ///< BLACK_PEN
        Handle brush = 1000;                ///< WHITE_BRUSH
        Point place = {0, 0};
    };

    void Go(std::string_view name, Handle context, Point point);

    World& mWorld;
    std::map<Handle, Context> mContexts;
    Handle mLastContext = 0;
    Handle mLastPen = kFirstPen;
};

}  // namespace kwo::platform::simulated
