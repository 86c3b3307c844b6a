#pragma once

#include <cstdint>

#include "controls/month_dates.h"
#include "controls/selected_days.h"

namespace kwo::controls {

/// What a calendar remembers: the focus, the visible month, the limits and the selected days. It knows no form, no
/// picture and no layout.
///
/// The date 0 means "none": no focus, no limit. Members that take a day or lead to one raise InvalidProcedureCall
/// outside the years 100 to 9999, and then change nothing.
class MonthModel {
public:
    /// The day that keys start from, without a time of day. Its month is the one that is drawn.
    Date Focus() const { return mFocus; }
    bool HasFocus() const { return mFocus != kNone; }
    /// The focus and everything that follows it: the visible month and the framed day.
    void SetFocus(Date day);

    /// Both are 0 until there is a focus. ShowMonth leaves its numbers here as they were given, until the next focus.
    std::int16_t VisibleMonth() const { return mVisible.month; }
    std::int16_t VisibleYear() const { return mVisible.year; }
    /// A day of the visible month; one beyond its end runs on into the next month.
    Date VisibleDate(std::int32_t day) const { return DateOf(mVisible.year, mVisible.month, day); }
    /// The day of the month that wears the focus frame. A click that the form refuses moves it away from the focus.
    std::int16_t FramedDay() const { return mVisible.day; }
    void FrameDay(std::int16_t day) { mVisible.day = day; }

    /// In another month than the focus is, the focus moves to the first day. No limit is asked.
    void ShowMonth(std::int16_t month, std::int16_t year);
    /// The same day of a month before or behind, or the last one of a shorter month.
    Date MonthsFromFocus(std::int32_t months) const { return MovedByMonths(mFocus, months); }
    Date DaysFromFocus(std::int32_t days) const { return InCalendar({mFocus.days + days}); }
    bool IsInFocusMonth(Date day) const { return DayOf(day).month == DayOf(mFocus).month; }
    /// To a day of the same month.
    void MoveFocusInMonth(Date day);

    /// As they were set, without their times of day.
    Date MinDate() const { return mMinDate; }
    Date MaxDate() const { return mMaxDate; }
    /// True when the focus has moved to the limit, so that its month is to be shown. A limit of 0 or less is none.
    bool SetMinDate(Date date);
    bool SetMaxDate(Date date);
    /// Whether a month may be shown. Limits are whole months: every day of a limit's own month is allowed.
    bool Allows(Date day) const;

    /// Whether clicks and keys toggle days one by one.
    bool MultiSelect() const { return mMultiSelect; }
    void SetMultiSelect(bool multiSelect) { mMultiSelect = multiSelect; }
    /// Dates are rounded to the nearest day. An invalid date is never selected.
    bool IsSelected(Date date) const;
    void Select(Date date);
    void Deselect(Date date);
    void DeselectAll() { mSelected.Clear(); }
    /// The date that was selected first, as it was given; 0 when none is.
    Date FirstSelected() const { return mSelected.First(); }

    /// Selects the day, or toggles it, and moves the focus there. Without MultiSelect the focus loses its selection.
    void ClickDay(Date day);
    /// Without MultiSelect a newly selected focus is the only selected day.
    void ToggleFocus();

private:
    static constexpr Date kNone{};

    Date mFocus;
    CalendarDay mVisible;  ///< the visible month, and its framed day
    Date mMinDate;
    Date mMaxDate;
    bool mMultiSelect = false;
    SelectedDays mSelected;
};

}  // namespace kwo::controls
