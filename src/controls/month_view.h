#pragma once

#include <array>
#include <cstdint>

#include "component/component.h"
#include "controls/month_drawing.h"
#include "controls/month_layout.h"
#include "controls/picture_box.h"
#include "controls/selected_days.h"

namespace kwo::controls {

/// A calendar of one month on a picture box of the caller's, who forwards the box's events.
///
/// The box's form is asked before the month ("OnChangeMonth", on request) or the selection ("OnChangeDate") changes and
/// may refuse. Members raise what the host raises.
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

    /// Plain values; the next drawing uses them.
    bool CanSelect = false;
    bool MultiSelect = false;
    MonthStyle style;

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
    void SelDaysClear() { mSelected.Clear(); }
    Date SelDay() const { return mSelected.First(); }
    bool IsSelected(Date date) const;

    /// Limits of the months that the user can reach; 0 is none.
    Date MinDate() const { return mMinDate; }
    void SetMinDate(Date date);
    Date MaxDate() const { return mMaxDate; }
    void SetMaxDate(Date date);
    std::int16_t VisibleMonth() const { return mVisibleMonth; }
    std::int16_t VisibleYear() const { return mVisibleYear; }

    /// 0 bump, 1 raised, 2 sunken, 3 etched. Setting one redraws.
    std::int16_t CaptionBevel() const { return style.captionBevel.Number(); }
    std::int16_t DayHdrBevel() const { return style.headerBevel.Number(); }
    std::int16_t DayBevel() const { return style.dayBevel.Number(); }
    void SetCaptionBevel(std::int16_t number) { SetBevel(style.captionBevel, number); }
    void SetDayHdrBevel(std::int16_t number) { SetBevel(style.headerBevel, number); }
    void SetDayBevel(std::int16_t number) { SetBevel(style.dayBevel, number); }

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
    void SetFocusDate(Date date);
    Date VisibleDate(std::int32_t day) const { return DateOf(mVisibleYear, mVisibleMonth, day); }

    void ChangeMonth(std::int32_t offset, Date target = {});
    bool FormRefusesMonth(Date target);
    bool FormRefusesDate(Date date);
    template <class... Arguments>
    bool FormRefuses(TextView notification, Arguments... asked);

    void ComputeLayout();
    bool Draw();
    void DrawSpinButton(std::size_t which, bool pressed) { mDrawing.SpinButton(mLayout, which, pressed); }

    void Spin(std::size_t which);
    void WaitUntil(std::int32_t due);
    Handle BoxWindow() const;
    bool ClickDays(platform::Point point);
    bool ClickDay(std::int16_t day);
    void MoveFocus(std::int32_t days);
    bool ToggleFocusDay();
    std::int32_t Ticks() const;

    component::Component& mComponent;
    TwipsPerPixel mTwips;
    PictureBox mBox;
    MonthDrawing mDrawing;
    HostObjectRef mParentForm;
    bool mCreated = false;
    std::int16_t mSpinInterval = 0;
    bool mNotifyOnChange = false;
    Handle mControlWindow = 0;
    Date mFocusDate;
    std::int16_t mFocusDay = 0;
    std::int16_t mVisibleYear = 0;
    std::int16_t mVisibleMonth = 0;
    SelectedDays mSelected;
    Date mMinDate;
    Date mMaxDate;
    Date mMinMonthStart;
    Date mMaxMonthEnd;
    MonthLayout mLayout;
    std::array<SpinState, 2> mSpin;
    std::int16_t mLastButton = 0;
    float mLastX = 0;
    float mLastY = 0;
    bool mDblClickPending = false;
};

}  // namespace kwo::controls
