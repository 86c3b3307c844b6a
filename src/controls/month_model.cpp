#include "controls/month_model.h"

#include <utility>

#include "platform/host_errors.h"

namespace kwo::controls {

using platform::ComponentError;
using platform::Try;

void MonthModel::SetFocus(Date day) {
    mVisible = DayOf(day);
    mFocus = day;
}

void MonthModel::ShowMonth(std::int16_t month, std::int16_t year) {
    const CalendarDay focus = DayOf(mFocus);
    if (month != focus.month || year != focus.year) {
        mFocus = InCalendar(DateOf(year, month, 1));
        mVisible.day = 1;
    }
    mVisible.year = year;
    mVisible.month = month;
}

void MonthModel::MoveFocusInMonth(Date day) {
    mVisible.day = DayOf(day).day;
    mFocus = day;
}

bool MonthModel::SetMinDate(Date date) {
    mMinDate = InCalendar(WholeDays(date));
    // Intended: before the first focus there is no visible month. It counts as earlier than any limit, and even than no
    // limit.
    const Date start = mMinDate.days <= 0 ? kNone : FirstOfMonth(mMinDate);
    if (!(VisibleDate(1) < start)) return false;
    SetFocus(mMinDate);
    return true;
}

bool MonthModel::SetMaxDate(Date date) {
    mMaxDate = InCalendar(WholeDays(date));
    // Intended: not the mirror of the other limit. It also acts in the month of the maximum, and always if the maximum
    // is cleared.
    constexpr std::int32_t kInNextMonth = 32;
    const Date end = mMaxDate.days <= 0 ? kNone : LastOfMonth(mMaxDate);
    if (!(VisibleDate(kInNextMonth) > end)) return false;
    SetFocus(mMaxDate);
    return true;
}

bool MonthModel::Allows(Date day) const {
    if (mMinDate.days > 0 && day < FirstOfMonth(mMinDate)) return false;
    return !(mMaxDate.days > 0 && day > LastOfMonth(mMaxDate));
}

bool MonthModel::IsSelected(Date date) const {
    try {
        return mSelected.Has(date);
    } catch (const ComponentError&) {
        return false;
    }
}

void MonthModel::Select(Date date) {
    // An invalid date is ignored.
    Try([&] { mSelected.Add(date); });
}

void MonthModel::Deselect(Date date) {
    // An invalid date is never selected.
    Try([&] { mSelected.Remove(date); });
}

void MonthModel::ClickDay(Date day) {
    SelectedDays selected = mSelected;
    if (mMultiSelect) {
        if (!selected.Remove(day)) selected.Add(day);
    } else {
        // Intended: the day with the focus leaves the selection, even if another day is the selected one.
        selected.Remove(mFocus);
        selected.Add(day);
    }
    // Without memory for the new selection, the old one stays.
    mSelected = std::move(selected);
    mFocus = day;
}

void MonthModel::ToggleFocus() {
    if (mSelected.Remove(mFocus)) return;
    SelectedDays selected = mMultiSelect ? mSelected : SelectedDays();
    selected.Add(mFocus);
    mSelected = std::move(selected);
}

}  // namespace kwo::controls
