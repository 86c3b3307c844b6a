#include "controls/splitter_v.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "controls/mouse_button.h"
#include "frame/text_routines.h"
#include "platform/component_error.h"
#include "platform/host_errors.h"
#include "platform/screen_drawing.h"

namespace kwo::controls {

namespace {

using platform::ComponentError;
using platform::Point;
using platform::Required;
using platform::Try;

constexpr std::int16_t kPixels = 3;
constexpr std::int16_t kMinimised = 1;

bool IsContainer(const HostObjectRef& object) {
    constexpr TextView kMembers[] = {u"hWnd", u"ScaleMode", u"ScaleX", u"ScaleY", u"ScaleWidth", u"ScaleHeight"};
    return object != nullptr && std::ranges::all_of(kMembers, [&](TextView member) { return object->Knows(member); });
}

}  // namespace

/// The inverted line on the screen; drawing it again erases it. The screen's device context lives as long as this
/// object.
class KWOSplitterV::TrackingLine {
public:
    explicit TrackingLine(const KWOSplitterV& splitter)
        : mOwner(splitter), mScreen(splitter.mComponent.platform.screenDrawing) {
        constexpr std::int32_t kInsideFrame = 6;
        constexpr std::int32_t kWidth = 4;
        constexpr Colour kColour = 0x80000003;
        constexpr std::int32_t kInvert = 6;
        constexpr std::int32_t kNullBrush = 5;
        mContext = mScreen.CreateDisplayContext();
        mPen = mScreen.CreatePen(kInsideFrame, kWidth, kColour);
        mSavedMode = mScreen.SetRasterOperation(mContext, kInvert);
        mSavedPen = mScreen.SelectObject(mContext, mPen);
        mSavedBrush = mScreen.SelectObject(mContext, mScreen.StockObject(kNullBrush));
    }
    TrackingLine(const TrackingLine&) = delete;
    TrackingLine& operator=(const TrackingLine&) = delete;
    ~TrackingLine() {
        mScreen.SetRasterOperation(mContext, mSavedMode);
        mScreen.SelectObject(mContext, mSavedBrush);
        mScreen.SelectObject(mContext, mSavedPen);
        mScreen.DeleteObject(mPen);
        mScreen.DeleteContext(mContext);
    }

    /// Asks the host where the line is. Everything that can fail is asked before anything is drawn: a line that is
    /// drawn once only stays on the screen.
    Line At(float position) const {
        const float top = mOwner.Single(mOwner.mSplitter, u"Top");
        const float height = mOwner.Single(mOwner.mSplitter, u"Height");
        const Point start = mOwner.mTwips.Pixels(position, top);
        const Point end = mOwner.mTwips.Pixels(position, height + top);
        return {mOwner.mComponent.platform.conversions.To32Bits(Required(mOwner.mContainer).Get(u"hWnd")), start, end};
    }
    void Draw(Line line) const {
        mScreen.ClientToScreen(line.window, line.start);
        mScreen.ClientToScreen(line.window, line.end);
        mScreen.MoveTo(mContext, line.start);
        mScreen.LineTo(mContext, line.end);
    }

private:
    const KWOSplitterV& mOwner;
    platform::ScreenDrawing& mScreen;
    Handle mContext;
    Handle mPen;
    std::int32_t mSavedMode;
    Handle mSavedPen;
    Handle mSavedBrush;
};

KWOSplitterV::KWOSplitterV(component::Component& component)
    : mComponent(component), mTwips(TwipsPerPixel::Of(component.platform.screen)), mAnnotation(component) {
    mComponent.SetProgramName();
}

bool KWOSplitterV::Create(const HostObjectRef& left, const HostObjectRef& right, const HostObjectRef& splitter,
                          const Options& options) {
    constexpr std::int16_t kStopIcon = 16;
    try {
        if (!IsContainer(ObjectProperty(Required(left), u"Container")) ||
            !IsContainer(ObjectProperty(Required(right), u"Container"))) {
            return false;
        }
        Open(left, right, splitter, options);
        // If the host has called Create meanwhile and that call has failed, there is no bar.
        mCreated = mSplitter != nullptr;
        Resize();
        Annotate();
    } catch (const ComponentError& error) {
        Forget();
        mComponent.error.KWO_SaveError(error, {.source = u"KWOSplitterV.Create", .replace = true});
        mComponent.error.KWO_AppError({}, {}, kStopIcon, false, false);
        return false;
    } catch (...) {
        Forget();
        throw;
    }
    return mCreated;
}

void KWOSplitterV::Open(const HostObjectRef& left, const HostObjectRef& right, const HostObjectRef& splitter,
                        const Options& options) {
    platform::Conversions& conversions = mComponent.platform.conversions;
    mAnnotation.Release();
    mLeftPane = left;
    mRightPane = right;
    mSplitter = splitter;
    const HostObjectRef form = ObjectProperty(*left, u"Parent");
    const HostObjectRef container = ObjectProperty(Required(splitter), u"Container");
    // The host may have called Create meanwhile; form and container then belong to that call's bar.
    if (mSplitter == splitter) {
        mForm = form;
        mContainer = container;
    }
    const std::int32_t window = conversions.To32Bits(Required(mContainer).Get(u"hWnd"));
    for (const HostObjectRef& pane : {left, right}) {
        const HostObjectRef own = ObjectProperty(*pane, u"Container");
        if (conversions.To32Bits(Required(own).Get(u"hWnd")) != window) pane->Set(u"Container", mContainer);
    }
    mUnitsPerPixelX = UnitsPerPixel(u"ScaleX");
    UnitsPerPixel(u"ScaleY");  // Nothing uses it, but a host notices the call.

    const auto replace = [&](float& value, const Variant& option) {
        if (!platform::IsMissing(option)) value = conversions.ToSingle(option);
    };
    replace(mSplitterSizeInPixels, options.splitterSizeInPixels);
    replace(mLeftMargin, options.marginLeft);
    replace(mTopMargin, options.marginTop);
    replace(mRightMargin, options.marginRight);
    replace(mBottomMargin, options.marginBottom);

    const float width = mUnitsPerPixelX * mSplitterSizeInPixels;
    const float limit = Single(mContainer, u"ScaleWidth") - mRightMargin - width;
    float position = Single(mSplitter, u"Left");
    if (position > limit) {
        position = limit;
    } else if (position < mLeftMargin) {
        position = mLeftMargin;
    }
    Move(mSplitter, position, mTopMargin, width, Single(mContainer, u"ScaleHeight") - mTopMargin - mBottomMargin);
}

/// Nothing happens until the next Create. The caller's objects are given back: one of them may own this object, which
/// would never end then.
void KWOSplitterV::Forget() {
    mCreated = false;
    if (std::exchange(mDragging, false)) TrackingLine(*this).Draw(mLine);
    mAnnotation.Release();
    // A release may call back, so all are taken out before one is released.
    const HostObjectRef released[] = {std::exchange(mLeftPane, nullptr), std::exchange(mRightPane, nullptr),
                                      std::exchange(mSplitter, nullptr), std::exchange(mContainer, nullptr),
                                      std::exchange(mForm, nullptr)};
}

void KWOSplitterV::Resize() {
    if (!mCreated) return;
    bool isMinimised = false;
    Try([&] {
        isMinimised = mComponent.platform.conversions.ToInt16(Required(mForm).Get(u"WindowState")) == kMinimised;
    });
    if (isMinimised) return;
    Try([&] {
        const float limit = Single(mContainer, u"ScaleWidth") - mRightMargin - mSplitterSizeInPixels * mUnitsPerPixelX;
        if (Single(mSplitter, u"Left") >= limit) Required(mSplitter).Let(u"Left", limit);
    });
    Try([&] {
        Move(mLeftPane, mLeftMargin, mTopMargin, Single(mSplitter, u"Left") - mLeftMargin,
             Single(mContainer, u"ScaleHeight") - mTopMargin - mBottomMargin);
    });
    Try([&] {
        const float place = Single(mSplitter, u"Left");
        const float edge = place + Single(mSplitter, u"Width");
        const float room = Single(mContainer, u"ScaleWidth") - edge - mLeftMargin - mRightMargin;
        // The limits of a drag, see Clamped: room is what is left of the way. Some hosts let a division by zero fail.
        const float way = place - mLeftMargin + room;
        mPlace = way > 0 ? (place - mLeftMargin) / way : 0;
        Move(mRightPane, edge, mTopMargin, room, Single(mLeftPane, u"Height"));
    });
    TellPlace();
}

void KWOSplitterV::Annotate() {
    const HostObjectRef bar = mSplitter;
    const Handle window = mAnnotation.WindowOf(bar);
    // The host may have called Create again meanwhile; that call counts.
    if (!mCreated || mSplitter != bar) return;
    mAnnotation.Take(window, Role::Separator);
    TellPlace();
}

void KWOSplitterV::TellPlace() {
    mAnnotation.Tell([&](Spoken& spoken) {
        constexpr float kWhole = 100;
        // Sizes of a host may be anything: a place that is not a number counts as the beginning.
        const float percent = mPlace > 0 ? std::min(mPlace * kWhole, kWhole) : 0;
        spoken.value = frame::Decimal(std::lround(percent)) + u"%";
    });
}

void KWOSplitterV::MouseDown(std::int16_t button, float x) {
    if (!mCreated) return;
    mDownX = x;
    if (button != kLeftButton) return;
    const float position = Single(mSplitter, u"Left");
    {
        const TrackingLine line(*this);
        mLine = line.At(position);
        line.Draw(mLine);
    }
    // Not before: what is not there must not be erased.
    mDragging = true;
    mLastLinePos = position;
}

void KWOSplitterV::MouseMove(float x) {
    if (!mCreated || !mDragging) return;
    // Intended: the line follows the pointer; the offset at which the bar was grabbed counts only at the release.
    const float position = Clamped(Single(mSplitter, u"Left") + x);
    if (position == mLastLinePos) return;
    const TrackingLine line(*this);
    const float last = mLastLinePos;
    const Line before = line.At(last);
    const Line now = line.At(position);
    // If the host has moved the line or ended the drag meanwhile, that event counts.
    if (!mDragging || mLastLinePos != last) return;
    line.Draw(before);
    line.Draw(now);
    mLine = now;
    mLastLinePos = position;
}

void KWOSplitterV::MouseUp(float x) {
    if (!mCreated || !mDragging) return;
    {
        const TrackingLine line(*this);
        const float place = mLastLinePos;
        const Line last = line.At(place);
        // The host may have ended the drag meanwhile, or moved the line.
        if (!std::exchange(mDragging, false)) return;
        line.Draw(mLastLinePos == place ? last : mLine);
    }
    const float position = Clamped(Single(mSplitter, u"Left") + x - mDownX);
    // Intended: the width comes from the screen's twips per pixel, unlike in Create, and the height from the
    // container's width.
    Move(mSplitter, position, mTopMargin, static_cast<float>(mTwips.x) * mSplitterSizeInPixels,
         Single(mContainer, u"ScaleWidth") - mTopMargin - mBottomMargin);
    Resize();
}

float KWOSplitterV::Clamped(float position) const {
    if (position < mLeftMargin) return mLeftMargin;
    // Intended: the left margin is subtracted at the right too.
    const float most = Single(mContainer, u"ScaleWidth") - mLeftMargin - mRightMargin - Single(mSplitter, u"Width");
    return position > most ? most : position;
}

float KWOSplitterV::Single(const HostObjectRef& object, TextView property) const {
    return mComponent.platform.conversions.ToSingle(Required(object).Get(property));
}

void KWOSplitterV::Move(const HostObjectRef& object, float left, float top, float width, float height) const {
    const Variant place[] = {left, top, width, height};
    Required(object).Call(u"Move", place);
}

float KWOSplitterV::UnitsPerPixel(TextView conversion) const {
    platform::Conversions& conversions = mComponent.platform.conversions;
    const std::int16_t mode = conversions.ToInt16(Required(mContainer).Get(u"ScaleMode"));
    const Variant arguments[] = {1.0f, kPixels, mode};
    return conversions.ToSingle(Required(mContainer).Call(conversion, arguments));
}

}  // namespace kwo::controls
