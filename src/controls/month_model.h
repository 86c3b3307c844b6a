#pragma once

#include <cstdint>

#include "controls/month_dates.h"
#include "controls/selected_days.h"

namespace kwo::controls {

/// The dates of a calendar: focus, visible month, limits and selected days. It knows no form, no picture and no layout.
///
/// The date 0 means none: no focus, no limit. Members that take a day or move to one raise InvalidProcedureCall outside
/// the years 100 to 9999, and then change nothing.
class MonthModel {
public:
    /// The day with the focus, without a time of day. The calendar shows its month.
    Date Focus() const { return mFocus; }
    /// False until a focus is set, and while it is the date 0.
    bool HasFocus() const { return mFocus != kNone; }
    /// Sets the focus, the visible month and the framed day.
    void SetFocus(Date day);

    /// The month and year that callers read; 0 before there is a focus. ShowMonth stores its numbers here as they are.
    std::int16_t VisibleMonth() const { return mVisible.month; }
    /// See VisibleMonth.
    std::int16_t VisibleYear() const { return mVisible.year; }
    /// A day of the visible month. A day beyond its end is in the next month.
    Date VisibleDate(std::int32_t day) const { return DateOf(mVisible.year, mVisible.month, day); }
    /// The day of the month that has the focus frame. If the form refuses a click, it differs from the focus.
    std::int16_t FramedDay() const { return mVisible.day; }
    /// Sets the framed day.
    void FrameDay(std::int16_t day) { mVisible.day = day; }

    /// Sets the visible month. If the focus is in another month, it moves to the first day. The limits do not count
    /// here.
    void ShowMonth(std::int16_t month, std::int16_t year);
    /// The day of the focus in another month, or the last day of a shorter month.
    Date MonthsFromFocus(std::int32_t months) const { return MovedByMonths(mFocus, months); }
    /// The focus plus a number of days.
    Date DaysFromFocus(std::int32_t days) const { return InCalendar({mFocus.days + days}); }
    /// Whether `day` has the same month as the focus, in any year.
    bool IsInFocusMonth(Date day) const { return DayOf(day).month == DayOf(mFocus).month; }
    /// Moves the focus to a day of its own month.
    void MoveFocusInMonth(Date day);

    /// The limits as they were set, without their times of day.
    Date MinDate() const { return mMinDate; }
    /// See MinDate.
    Date MaxDate() const { return mMaxDate; }
    /// Sets a limit; 0 or less means no limit. Returns true if the focus moved to the limit, so that its month must be
    /// shown.
    bool SetMinDate(Date date);
    /// As SetMinDate. It also moves the focus if the visible month is that of the limit, and always if the limit is
    /// cleared.
    bool SetMaxDate(Date date);
    /// Whether the limits allow the month of `day`. They are whole months.
    bool Allows(Date day) const;

    /// True if each click toggles a day; false if there is one selected day.
    bool MultiSelect() const { return mMultiSelect; }
    /// Changes the mode; selected days stay.
    void SetMultiSelect(bool multiSelect) { mMultiSelect = multiSelect; }
    /// Whether the date, rounded to the nearest day, is selected. An invalid date is not.
    bool IsSelected(Date date) const;
    /// Adds a day to the selection; an invalid date is ignored.
    void Select(Date date);
    /// Removes a day from the selection, if it is there.
    void Deselect(Date date);
    /// Empties the selection.
    void DeselectAll() { mSelected.Clear(); }
    /// The day that was selected first, as it was given; 0 if none is selected.
    Date FirstSelected() const { return mSelected.First(); }

    /// Selects the day, or toggles it in MultiSelect, and moves the focus there. Without MultiSelect the old focus is
    /// deselected.
    void ClickDay(Date day);
    /// Selects the focus or deselects it. Without MultiSelect it becomes the only selected day.
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
