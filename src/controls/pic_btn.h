#pragma once

#include <cstdint>

#include "component/component.h"
#include "controls/annotation.h"
#include "controls/pic_btn_drawing.h"
#include "controls/picture_box.h"

namespace kwo::controls {

/// A push button on the caller's picture box.
/// The caller forwards the events of the box and the key-down event of the form. A click calls "OnButtonClick" of the
/// form.
///
///     KWOPicBtn button(component);
///     button.Create(box, u"&Save");
///     button.MouseDown(1, xTwips, yTwips);
///     button.MouseUp(xTwips, yTwips);     // calls form.OnButtonClick(box)
///
/// Screen readers are told its caption, access key and state as long as it has the box.
///
/// Members raise what the host raises, with their own name as the source; KeyDown and Form_KeyDown pass it on as it
/// is. Before Create most of them raise NoObjectSet. A call into the host may call any member again.
class KWOPicBtn {
public:
    /// Reads the twips per pixel of the screen, for all buttons of the component.
    /// `component` must outlive the object. Sets the component's program name.
    explicit KWOPicBtn(component::Component& component);

    /// Takes the picture box, measures it and draws the button.
    /// Ignores an object that is not a picture box, without a word: it has no result, which is intended.
    /// The object keeps the box and its form until the next Create or its own end.
    void Create(const HostObjectRef& pictureBox, TextView caption);

    /// The text as it was given, with the "&" before the access key.
    const Text& Caption() const { return mCaption; }
    /// Sets the text and the access key: the letter behind the first "&", if there is one.
    /// The next drawing shows it. The letter is looked up in the text as it was given, although its place is counted
    /// without leading blanks: see docs/intended.md.
    void SetCaption(TextView caption);
    /// 3 left, 4 right, 2 centre.
    std::int16_t TextAlignment() const { return mDrawing.TextAlignment(); }
    /// 3 left, 4 right, any other value centre. The next drawing shows it.
    void SetTextAlignment(std::int16_t alignment) { mDrawing.SetTextAlignment(alignment); }
    /// A flag of the text's format (DT_WORDBREAK); true at first.
    /// The format also asks for a single line, so the text stays on one line in either case.
    bool MultiLine() const { return mDrawing.MultiLine(); }
    /// Sets that flag, which MultiLine then returns.
    void SetMultiLine(bool multiLine) { mDrawing.SetMultiLine(multiLine); }

    /// The second press of a double click: acts as MouseDown with the last button and place.
    /// The next MouseMove completes it if no MouseUp does.
    void DblClick();
    /// Draws the frame over the picture. Call it when the box gets the focus.
    void GotFocus();
    /// Draws the button raised and without the frame.
    void LostFocus();
    /// For a key of the form.
    /// If it is Alt with the access key, moves the focus to the box, clicks, sets both arguments to 0 and returns
    /// true.
    /// Otherwise it changes nothing and returns false.
    bool Form_KeyDown(std::int16_t& keyCode, std::int16_t& shift);
    /// For a key of the box.
    /// Enter and Space click; arrows move the focus to the previous or the next control. `keyCode` becomes 0 for all
    /// of them but Space; other keys do nothing.
    /// A click shows the pressed button and processes messages for a tenth of a second. Keys that arrive until its
    /// "OnButtonClick" returns do not click again.
    void KeyDown(std::int16_t& keyCode);
    /// A press at a place in twips. Only `button` 1 (left) on the button presses it.
    void MouseDown(std::int16_t button, float x, float y);
    /// A movement, in twips. While the button is down, it is drawn pressed only if the pointer is on it.
    void MouseMove(float x, float y);
    /// A release of any button, in twips.
    /// Draws the button raised. If it was pressed and the place is on it, calls "OnButtonClick", which may put another
    /// picture box in the place of this one.
    /// If that procedure fails, the error is raised with the name of the step added to its description, and the button
    /// still counts as down.
    void MouseUp(float x, float y);
    /// Measures the box again and draws the button raised. Does nothing before Create.
    void Resize();

private:
    /// Takes a picture box that is one.
    void Open(const HostObjectRef& pictureBox, TextView caption);
    /// Annotates the box that a click has put in the place of `before`, if it is another one.
    void AnnotateNewBox(const HostObjectRef& before);
    /// Tells screen readers everything, or the state alone.
    void TellCaption();
    void TellState();
    std::int32_t SpokenState() const;
    void DrawButton(bool pressed, bool framed);
    bool IsInside(float x, float y) const;
    /// The steps of MouseUp. `step` becomes the name of the step that is about to run.
    void Release(float x, float y, Text& step);
    /// Calls "OnButtonClick" and takes the box back.
    /// Raises ObjectRequired if the form puts something else in its place.
    void NotifyClick();
    /// A press and a release, with a tenth of a second between them.
    void Click();
    /// A line end and the name of a step, in the user's language.
    Text StepText(std::int32_t message);

    component::Component& mComponent;
    PictureBox mBox;
    PicBtnDrawing mDrawing;
    HostObjectRef mForm;
    Text mCaption;
    /// One capital letter or nothing.
    Text mAccessKey;
    /// Whether the picture was drawn pressed last.
    bool mDrawnPressed = false;
    /// The window that has the focus, as far as the events tell; 0 for none.
    Handle mFocusWindow = 0;
    /// What the picture shows.
    bool mShownPressed = false;
    /// A press on the button was not released yet.
    bool mButtonDown = false;
    float mLastX = 0;
    float mLastY = 0;
    std::int16_t mLastButton = 0;
    bool mDblClickPending = false;
    /// A click by key is shown, or its procedure runs.
    bool mKeyClickRuns = false;
    /// The procedure of the last click runs.
    bool mNotifying = false;
    Annotation mAnnotation;
};

}  // namespace kwo::controls
