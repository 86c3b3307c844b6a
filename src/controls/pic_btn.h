#pragma once

#include <cstdint>

#include "component/component.h"
#include "controls/pic_btn_drawing.h"
#include "controls/picture_box.h"

namespace kwo::controls {

/// A push button on the caller's picture box. The caller forwards the events of the box and the key-down event of the
/// form. A click calls "OnButtonClick" of the form.
///
/// Members raise what the host raises, with their own name as the source; KeyDown and Form_KeyDown pass it on as it is.
/// Before Create most of them raise NoObjectSet.
class KWOPicBtn {
public:
    /// Reads the twips per pixel of the screen, for all buttons. `component` must outlive the object.
    explicit KWOPicBtn(component::Component& component);

    /// Takes the picture box, measures it and draws the button. Ignores an object that is not a picture box. It has no
    /// result, which is intended.
    void Create(const HostObjectRef& pictureBox, TextView caption);

    /// The text as it was given, with the "&" before the access key.
    const Text& Caption() const { return mCaption; }
    /// Sets the text and the access key. The next drawing shows it.
    void SetCaption(TextView caption);
    /// 3 left, 4 right, 2 centre.
    std::int16_t TextAlignment() const { return mDrawing.TextAlignment(); }
    /// 3 left, 4 right, any other value centre. The next drawing shows it.
    void SetTextAlignment(std::int16_t alignment) { mDrawing.SetTextAlignment(alignment); }
    /// Whether lines break between words; true at first.
    bool MultiLine() const { return mDrawing.MultiLine(); }
    /// The next drawing shows it.
    void SetMultiLine(bool multiLine) { mDrawing.SetMultiLine(multiLine); }

    /// The second press of a double click. The next MouseMove completes it if no MouseUp does.
    void DblClick();
    /// Draws the frame.
    void GotFocus();
    /// Draws the button without the frame.
    void LostFocus();
    /// For a key of the form. If it is Alt with the access key, moves the focus to the box, clicks, sets both arguments
    /// to 0 and returns true.
    bool Form_KeyDown(std::int16_t& keyCode, std::int16_t& shift);
    /// For a key of the box. Enter and Space click; arrows move the focus to the previous or the next control.
    /// `keyCode` becomes 0 for all of them but Space. A click processes messages for a tenth of a second.
    void KeyDown(std::int16_t& keyCode);
    /// A press at a place in twips. Only `button` 1 (left) presses the button.
    void MouseDown(std::int16_t button, float x, float y);
    /// A movement, in twips. While the button is down, it is drawn pressed only if the pointer is on it.
    void MouseMove(float x, float y);
    /// A release of any button, in twips. If it is on the button that was pressed, calls "OnButtonClick", which may put
    /// another picture box in the place of this one.
    void MouseUp(float x, float y);
    /// Measures the box again and draws the button. Does nothing before Create.
    void Resize();

private:
    void Open(const HostObjectRef& pictureBox, TextView caption);
    void DrawButton(bool pressed, bool framed);
    bool IsInside(float x, float y) const;
    void Release(float x, float y, Text& step);
    void NotifyClick();
    void Click();
    Text StepText(std::int32_t message);

    component::Component& mComponent;
    PictureBox mBox;
    PicBtnDrawing mDrawing;
    HostObjectRef mForm;
    Text mCaption;
    Text mAccessKey;  ///< one capital letter or nothing
    bool mShownPressed = false;
    bool mButtonDown = false;
    float mLastX = 0;
    float mLastY = 0;
    std::int16_t mLastButton = 0;
    bool mDblClickPending = false;
    bool mKeyClickRuns = false;
    bool mNotifying = false;  ///< the procedure of the last click runs
};

}  // namespace kwo::controls
