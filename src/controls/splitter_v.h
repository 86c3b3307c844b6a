#pragma once

#include <cstdint>

#include "component/component.h"
#include "controls/annotation.h"
#include "controls/picture_box.h"
#include "platform/twips.h"

namespace kwo::controls {

using platform::TwipsPerPixel;

/// A vertical bar between two panes of the caller's form.
/// The caller forwards the mouse events of the bar and the resize event of the form. While the user drags the bar, an
/// inverted line on the screen shows where it will be.
///
///     KWOSplitterV splitter(component);
///     splitter.Create(leftPane, rightPane, bar, {});
///     splitter.MouseDown(1, x);           // then MouseMove, MouseUp
///
/// Screen readers are told how far the bar is, in percent of the way between its limits.
///
/// Before Create has succeeded, nothing happens. Members raise what the host raises. Places and sizes are in the units
/// of the bar's container; it should be twips.
class KWOSplitterV {
public:
    /// What Create may be told besides the controls.
    /// A missing value changes nothing: an earlier Create or property counts.
    struct Options {
        /// The width of the bar; 4 at first.
        Variant splitterSizeInPixels = platform::Missing();
        /// This and the others: in the units of the container; 0 at first.
        Variant marginLeft = platform::Missing();
        Variant marginTop = platform::Missing();
        Variant marginRight = platform::Missing();
        Variant marginBottom = platform::Missing();
    };

    /// Reads the twips per pixel of the screen, once.
    /// `component` must outlive the object. Sets the component's program name.
    explicit KWOSplitterV(component::Component& component);

    /// Takes the two panes and the bar, puts the panes into the bar's container, places the bar and fits the panes.
    /// The object keeps all of them, the container and the form until the next Create or its own end.
    ///
    /// Returns false, and changes nothing, if a pane is in something that is not a container. If the host raises an
    /// error, the error replaces the saved one, an application-error box shows it, and the result is false; the object
    /// then lets go of the controls. What was moved by then stays moved.
    bool Create(const HostObjectRef& left, const HostObjectRef& right, const HostObjectRef& splitter,
                const Options& options);
    /// Fits the panes to the bar, unless the form is minimised.
    /// A bar beyond the right limit moves in. Skips what the host refuses. Does not change the bar's height.
    void Resize();
    /// Starts a drag if `button` is 1 (left), and draws the line. `x` is in the units of the bar, from its left edge.
    void MouseDown(std::int16_t button, float x);
    /// Moves the line on the screen while the bar is dragged. The line stays between the limits of the bar.
    void MouseMove(float x);
    /// Ends a drag, whichever button is released: removes the line, moves the bar and fits the panes.
    /// The bar's height then comes from the container's width, which is intended.
    void MouseUp(float x);

    /// The gap between the left pane and the edge of the container, in the container's units; 0 at first.
    /// It is also the bar's leftmost place.
    /// The four margins take effect at the next Resize. Every number is accepted, negative ones too.
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
    /// Draws lines on the screen, as long as one event is handled.
    class TrackingLine;
    /// A line in the client area of the container's window, in pixels.
    struct Line {
        platform::Handle window = 0;
        platform::Point start = {};
        platform::Point end = {};
    };

    /// Create without the handling of errors.
    void Open(const HostObjectRef& left, const HostObjectRef& right, const HostObjectRef& splitter,
              const Options& options);
    /// A property as a number.
    float Single(const HostObjectRef& object, TextView property) const;
    /// Ends a drag and lets go of the caller's objects.
    void Forget();
    /// Calls the object's method Move.
    void Move(const HostObjectRef& object, float left, float top, float width, float height) const;
    /// What one pixel is in the units of the container, by one of its conversions.
    float UnitsPerPixel(TextView conversion) const;
    /// The nearest position that the bar may have.
    float Clamped(float position) const;
    /// Annotates the window of the bar, if it has one.
    void Annotate();
    /// Tells screen readers where the bar is.
    void TellPlace();

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
    /// Where the bar was grabbed, from its left edge.
    float mDownX = 0;
    /// Where the line is, from the container's left edge.
    float mLastLinePos = 0;
    float mSplitterSizeInPixels = 4;
    /// Units of the container to a pixel.
    float mUnitsPerPixelX = 0;
    /// While the bar is dragged, there is a line on the screen.
    bool mDragging = false;
    /// The one that was drawn last.
    Line mLine;
    bool mCreated = false;
    /// How far the bar was at the last Resize, from 0 to 1.
    float mPlace = 0;
    Annotation mAnnotation;
};

}  // namespace kwo::controls
