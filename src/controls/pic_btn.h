#pragma once

#include <cstdint>

#include "component/component.h"
#include "controls/pic_btn_drawing.h"
#include "controls/picture_box.h"

namespace kwo::controls {

/// A push button on a picture box of the caller's, who forwards the box's events. A click calls "OnButtonClick" of the
/// box's form.
///
/// Members raise what the host raises, under their own name as the source; before Create most of them find no box (91).
class KWOPicBtn {
public:
    explicit KWOPicBtn(component::Component& component);

    /// Ignores what is no picture box. Tells nobody whether it succeeded: clients must not ask.
    void Create(const HostObjectRef& pictureBox, TextView caption);

    /// As it was given, with the "&" before the access key.
    const Text& Caption() const { return mCaption; }
    void SetCaption(TextView caption);
    /// 3 left, 4 right, anything else the centre, which reads 2.
    std::int16_t TextAlignment() const { return mDrawing.TextAlignment(); }
    void SetTextAlignment(std::int16_t alignment) { mDrawing.SetTextAlignment(alignment); }
    bool MultiLine() const { return mDrawing.MultiLine(); }
    void SetMultiLine(bool multiLine) { mDrawing.SetMultiLine(multiLine); }

    void DblClick();
    void GotFocus();
    void LostFocus();
    /// True when the key was the button's access key; it is then used up: both are 0.
    bool Form_KeyDown(std::int16_t& keyCode, std::int16_t& shift);
    void KeyDown(std::int16_t& keyCode);
    void MouseDown(std::int16_t button, float x, float y);
    void MouseMove(float x, float y);
    void MouseUp(float x, float y);
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
    bool mNotifying = false;  ///< of the click that the last press has ended in
};

}  // namespace kwo::controls
