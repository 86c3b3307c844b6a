#pragma once

#include <array>
#include <cstdint>

#include "component/component.h"
#include "controls/month_drawing.h"
#include "controls/month_form.h"
#include "controls/month_layout.h"
#include "controls/month_model.h"
#include "controls/picture_box.h"

namespace kwo::controls {

/// A calendar of one month on a picture box of the caller's, who forwards the box's events.
///
/// The model keeps the dates, the layout the places; the drawing shows both and input asks both. The box's form is
/// asked before the month ("OnChangeMonth", on request) or the selection ("OnChangeDate") changes and may refuse.
/// Members raise what the host raises.
class KWOMonthView {
public:
    struct CreateOptions {
        Variant selDate = platform::Missing();
        Variant canMultiSelect = platform::Missing();
        Variant spinInterval = platform::Missing();  ///< milliseconds
        Variant notifyOnChange = platform::Missing();
        Variant control = platform::Missing();
        Variant canChange = platform::Missing();
    };

    explicit KWOMonthView(component::Component& component);

    /// False for what is no picture box and when the host raises something, which replaces the saved error. A
    /// `focusDate` of 0 becomes today.
    bool Create(const HostObjectRef& pictureBox, Date& focusDate, const CreateOptions& options);

    /// Whether the user can select days with mouse and keys.
    bool CanSelect() const { return mCanSelect; }
    void SetCanSelect(bool canSelect) { mCanSelect = canSelect; }
    bool MultiSelect() const { return mModel.MultiSelect(); }
    void SetMultiSelect(bool multiSelect) { mModel.SetMultiSelect(multiSelect); }

    // The next drawing uses them.
    bool CaptionFontBold() const { return mStyle.captionBold; }
    void SetCaptionFontBold(bool bold) { mStyle.captionBold = bold; }
    bool DayHdrFontBold() const { return mStyle.headerBold; }
    void SetDayHdrFontBold(bool bold) { mStyle.headerBold = bold; }
    bool DayFontBold() const { return mStyle.dayBold; }
    void SetDayFontBold(bool bold) { mStyle.dayBold = bold; }
    bool SelDayFontBold() const { return mStyle.selectedBold; }
    void SetSelDayFontBold(bool bold) { mStyle.selectedBold = bold; }
    Colour CaptionFontColor() const { return mStyle.captionColour; }
    void SetCaptionFontColor(Colour colour) { mStyle.captionColour = colour; }
    Colour DayHdrFontColor() const { return mStyle.headerColour; }
    void SetDayHdrFontColor(Colour colour) { mStyle.headerColour = colour; }
    Colour DayFontColor() const { return mStyle.dayColour; }
    void SetDayFontColor(Colour colour) { mStyle.dayColour = colour; }
    Colour SelDayFontColor() const { return mStyle.selectedColour; }
    void SetSelDayFontColor(Colour colour) { mStyle.selectedColour = colour; }

    /// 0 bump, 1 raised, 2 sunken, 3 etched. Setting one redraws.
    std::int16_t CaptionBevel() const { return mStyle.captionBevel.Number(); }
    std::int16_t DayHdrBevel() const { return mStyle.headerBevel.Number(); }
    std::int16_t DayBevel() const { return mStyle.dayBevel.Number(); }
    void SetCaptionBevel(std::int16_t number) { SetBevel(mStyle.captionBevel, number); }
    void SetDayHdrBevel(std::int16_t number) { SetBevel(mStyle.headerBevel, number); }
    void SetDayBevel(std::int16_t number) { SetBevel(mStyle.dayBevel, number); }

    /// Moves the focus to the month's first day when it is in another month, also when the month is then refused.
    void ShowMonth(std::int16_t month, std::int16_t year);
    /// On an arrow: returns after the release, or when there will be none.
    void MouseDown(std::int16_t button, float x, float y);
    void MouseMove(float x, float y);
    void MouseUp();
    void DblClick();
    void Resize();
    /// `keyCode` becomes 0 when the key was used up.
    void KeyDown(std::int16_t& keyCode);

    void SelDaysAdd(Date date);
    void SelDaysRemove(Date date);
    void SelDaysClear() { mModel.DeselectAll(); }
    Date SelDay() const { return mModel.FirstSelected(); }
    bool IsSelected(Date date) const { return mModel.IsSelected(date); }

    /// Limits of the months that the user can reach; 0 is none.
    Date MinDate() const { return mModel.MinDate(); }
    void SetMinDate(Date date);
    Date MaxDate() const { return mModel.MaxDate(); }
    void SetMaxDate(Date date);
    std::int16_t VisibleMonth() const { return mModel.VisibleMonth(); }
    std::int16_t VisibleYear() const { return mModel.VisibleYear(); }

private:
    struct SpinState {
        bool active = false;   ///< from the press to the release
        bool pressed = false;  ///< the pointer is on it
    };

    bool Open(const HostObjectRef& pictureBox, Date& focusDate, const CreateOptions& options);
    void PrepareBox();
    void ApplyOptions(const CreateOptions& options);
    Date DateIn(const Variant& value) const;
    void SetBevel(Bevel& bevel, std::int16_t number);
    void ChangeMonth(Date target);

    void ComputeLayout();
    bool Draw() { return mDrawing.Calendar(mLayout, mStyle, mModel); }
    void DrawSpinButton(std::size_t which, bool pressed) { mDrawing.SpinButton(mLayout, which, pressed); }

    void Spin(std::size_t which);
    void WaitUntil(std::int32_t due);
    Handle BoxWindow() const;
    bool ClickDays(platform::Point point);
    bool ClickDay(std::int16_t day);
    void MoveFocus(std::int32_t days);
    bool ToggleFocus();
    std::int32_t Ticks() const;

    component::Component& mComponent;
    TwipsPerPixel mTwips;
    PictureBox mBox;
    MonthForm mForm;
    MonthDrawing mDrawing;
    MonthModel mModel;
    MonthLayout mLayout;
    MonthStyle mStyle;
    bool mCreated = false;
    bool mCanSelect = false;
    std::int16_t mSpinInterval = 0;
    bool mNotifyOnChange = false;
    Handle mControlWindow = 0;
    std::array<SpinState, 2> mSpin;
    std::int16_t mLastButton = 0;
    float mLastX = 0;
    float mLastY = 0;
    bool mDblClickPending = false;
};

}  // namespace kwo::controls
