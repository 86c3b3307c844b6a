#pragma once

#include <cstdint>

#include "component/component.h"
#include "controls/picture_box.h"
#include "controls/pixels.h"

namespace kwo::controls {

/// A vertical bar between two panes of the caller's form, who forwards the bar's mouse events and the form's resize
/// event. While it is dragged, an inverted line on the screen shows where it will be.
///
/// Nothing happens before Create has succeeded. Members raise what the host raises; Resize passes it over.
class KWOSplitterV {
public:
    /// What Create may be told besides the controls; what is missing stays as it is.
    struct Options {
        Variant splitterSizeInPixels = platform::Missing();
        Variant marginLeft = platform::Missing();
        Variant marginTop = platform::Missing();
        Variant marginRight = platform::Missing();
        Variant marginBottom = platform::Missing();
    };

    explicit KWOSplitterV(component::Component& component);

    /// False, after an application-error box, when the host raises something; false for panes in other things than
    /// containers, which stores nothing.
    bool Create(const HostObjectRef& left, const HostObjectRef& right, const HostObjectRef& splitter,
                const Options& options);
    void Resize();
    /// `x` is in the units of the bar itself.
    void MouseDown(std::int16_t button, float x);
    void MouseMove(float x);
    void MouseUp(float x);

    /// Between the panes and the container's edges, in the container's units. The next arrangement uses them.
    float LeftMargin() const { return mLeftMargin; }
    void SetLeftMargin(float margin) { mLeftMargin = margin; }
    float TopMargin() const { return mTopMargin; }
    void SetTopMargin(float margin) { mTopMargin = margin; }
    float RightMargin() const { return mRightMargin; }
    void SetRightMargin(float margin) { mRightMargin = margin; }
    float BottomMargin() const { return mBottomMargin; }
    void SetBottomMargin(float margin) { mBottomMargin = margin; }

private:
    class TrackingLine;

    void Open(const HostObjectRef& left, const HostObjectRef& right, const HostObjectRef& splitter,
              const Options& options);
    float Single(const HostObjectRef& object, TextView property) const;
    void Move(const HostObjectRef& object, float left, float top, float width, float height) const;
    float UnitsPerPixel(TextView conversion) const;
    /// Where the bar may be.
    float Clamped(float position) const;

    component::Component& mComponent;
    TwipsPerPixel mTwips;
    HostObjectRef mLeftPane;
    HostObjectRef mRightPane;
    HostObjectRef mSplitter;
    HostObjectRef mContainer;
    HostObjectRef mForm;
    float mLeftMargin = 0;
    float mTopMargin = 0;
    float mRightMargin = 0;
    float mBottomMargin = 0;
    float mDownX = 0;
    float mLastLinePos = 0;
    float mSplitterSizeInPixels = 4;
    float mUnitsPerPixelX = 0;
    float mUnitsPerPixelY = 0;
    bool mDragging = false;
    bool mCreated = false;
};

}  // namespace kwo::controls
