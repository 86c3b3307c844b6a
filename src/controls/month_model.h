#pragma once

#include <cstddef>
#include <cstdint>

#include "controls/month_dates.h"

namespace kwo::controls {

/// The dates of a calendar: focus, visible month, limits and selected days.
/// It knows no form, no picture and no layout: its user asks the form first and draws afterwards.
///
/// The date 0 means none: no focus, no limit. Members that take a day or move to one raise InvalidProcedureCall
/// outside the years 100 to 9999, and then change nothing.
class MonthModel {
public:
    /// The day with the focus, without a time of day; 0 at first. The calendar shows its month.
    Date Focus() const { return mFocus; }
    /// False until a focus is set, and while it is the date 0.
    bool HasFocus() const { return mFocus != kNone; }
    /// Sets the focus, the visible month and the framed day. Neither limits nor selection matter.
    void SetFocus(Date day);

    /// The month and year that callers read; 0 before there is a focus. ShowMonth stores its numbers here as they are.
    std::int16_t VisibleMonth() const { return mVisible.month; }
    /// See VisibleMonth.
    std::int16_t VisibleYear() const { return mVisible.year; }
    /// A day of the visible month.
    /// A day beyond its end is in the next month. The visible month may be one that ShowMonth stored without a check;
    /// raises InvalidProcedureCall if its year is beyond 30,000.
    Date VisibleDate(std::int32_t day) const { return DateOf(mVisible.year, mVisible.month, day); }
    /// The day of the month that has the focus frame. If the form refuses a click, it differs from the focus.
    std::int16_t FramedDay() const { return mVisible.day; }
    /// Sets the framed day, 1 to 31.
    void FrameDay(std::int16_t day) { mVisible.day = day; }

    /// Sets the visible month.
    /// If the focus is in another month, it moves to the first day. The limits do not count here.
    /// Months beyond 1 to 12 move the focus into another year, while VisibleMonth returns the number as it was given.
    void ShowMonth(std::int16_t month, std::int16_t year);
    /// The day of the focus in another month, `months` later or earlier, or the last day of a shorter month.
    /// Moves nothing.
    Date MonthsFromFocus(std::int32_t months) const { return MovedByMonths(mFocus, months); }
    /// The focus plus a number of days, which may be negative. Moves nothing.
    Date DaysFromFocus(std::int32_t days) const { return InCalendar({mFocus.days + days}); }
    /// Whether `day` has the same month as the focus, in any year.
    bool IsInFocusMonth(Date day) const { return DayOf(day).month == DayOf(mFocus).month; }
    /// Moves the focus and the frame to a day of the focus's own month.
    void MoveFocusInMonth(Date day);

    /// The limits as they were set, without their times of day.
    Date MinDate() const { return mMinDate; }
    /// See MinDate.
    Date MaxDate() const { return mMaxDate; }
    /// Sets a limit, without its time of day; 0 or less means no limit.
    /// Returns true if the focus moved to the limit, so that its month must be shown: that is, if the visible month
    /// begins before the limit's.
    bool SetMinDate(Date date);
    /// As SetMinDate, if the visible month ends after the limit's.
    /// It also moves the focus if the visible month is that of the limit, and always if the limit is cleared: see
    /// docs/intended.md.
    bool SetMaxDate(Date date);
    /// Whether the limits allow the month of `day`. They are whole months: every day of the limit's month is allowed.
    bool Allows(Date day) const;

    /// True if each click toggles a day; false if there is one selected day.
    bool MultiSelect() const { return mMultiSelect; }
    /// Changes the mode; selected days stay.
    void SetMultiSelect(bool multiSelect) { mMultiSelect = multiSelect; }
    /// Whether the date, rounded to the nearest day, is selected.
    /// A date that is not a number, or beyond 32 bits, is not.
    bool IsSelected(Date date) const;
    /// Adds a day to the selection, at its end.
    /// A date that is not a number, or beyond 32 bits, is ignored. The limits do not count.
    void Select(Date date);
    /// Removes a day from the selection, if it is there.
    void Deselect(Date date);
    /// Empties the selection.
    void DeselectAll() { mSelected.Clear(); }
    /// How many days are selected.
    std::size_t SelectedCount() const { return mSelected.Count(); }
    /// The day that was selected first, as it was given; 0 if none is selected.
    Date FirstSelected() const { return mSelected.First(); }

    /// Selects the day, or toggles it in MultiSelect, and moves the focus there.
    /// Without MultiSelect the old focus is deselected; other selected days stay.
    void ClickDay(Date day);
    /// Selects the focus or deselects it. Without MultiSelect a selected focus becomes the only selected day.
    void ToggleFocus();

private:
    static constexpr Date kNone{};

    /// 0 while there is none.
    Date mFocus;
    CalendarDay mVisible;  ///< the visible month, and its framed day
    /// The limits, without times of day; 0 or less means none.
    Date mMinDate;
    Date mMaxDate;
    bool mMultiSelect = false;
    SelectedDays mSelected;
};

}  // namespace kwo::controls
