#pragma once

#include <cstdint>

#include "component/component.h"
#include "controls/picture_box.h"
#include "platform/twips.h"

namespace kwo::controls {

using platform::TwipsPerPixel;

/// A vertical bar between two panes of the caller's form. The caller forwards the mouse events of the bar and the
/// resize event of the form. While the user drags the bar, an inverted line on the screen shows where it will be.
///
/// Before Create has succeeded, nothing happens. Members raise what the host raises.
class KWOSplitterV {
public:
    /// What Create may be told besides the controls. A missing value changes nothing.
    struct Options {
        Variant splitterSizeInPixels = platform::Missing();  ///< the width of the bar; 4 at first
        Variant marginLeft = platform::Missing();            ///< this and the others: in the units of the container
        Variant marginTop = platform::Missing();
        Variant marginRight = platform::Missing();
        Variant marginBottom = platform::Missing();
    };

    /// Reads the twips per pixel of the screen, once. `component` must outlive the object.
    explicit KWOSplitterV(component::Component& component);

    /// Takes the two panes and the bar, puts the panes into the bar's container, places the bar and fits the panes.
    ///
    /// Returns false, and stores nothing, if a pane is in something that is not a container. If the host raises an
    /// error, an application-error box shows it and the result is false.
    bool Create(const HostObjectRef& left, const HostObjectRef& right, const HostObjectRef& splitter,
                const Options& options);
    /// Fits the panes to the bar, unless the form is minimised. Skips what the host refuses. Does not change the bar's
    /// height.
    void Resize();
    /// Starts a drag if `button` is 1 (left). `x` is in the units of the bar, from its left edge.
    void MouseDown(std::int16_t button, float x);
    /// Moves the line on the screen while the bar is dragged.
    void MouseMove(float x);
    /// Ends a drag: moves the bar and fits the panes. The bar's height then comes from the container's width, which is
    /// intended.
    void MouseUp(float x);

    /// The gap between the left pane and the edge of the container, in the container's units. It is also the bar's
    /// leftmost place. The four margins take effect at the next Resize.
    float LeftMargin() const { return mLeftMargin; }
    void SetLeftMargin(float margin) { mLeftMargin = margin; }
    /// The gap above the panes and the bar.
    float TopMargin() const { return mTopMargin; }
    void SetTopMargin(float margin) { mTopMargin = margin; }
    /// The gap between the right pane and the edge.
    float RightMargin() const { return mRightMargin; }
    void SetRightMargin(float margin) { mRightMargin = margin; }
    /// The gap below the panes and the bar.
    float BottomMargin() const { return mBottomMargin; }
    void SetBottomMargin(float margin) { mBottomMargin = margin; }

private:
    class TrackingLine;

    void Open(const HostObjectRef& left, const HostObjectRef& right, const HostObjectRef& splitter,
              const Options& options);
    float Single(const HostObjectRef& object, TextView property) const;
    void Forget();
    void Move(const HostObjectRef& object, float left, float top, float width, float height) const;
    float UnitsPerPixel(TextView conversion) const;
    /// The nearest position that the bar may have.
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
    bool mDragging = false;
    bool mCreated = false;
};

}  // namespace kwo::controls
