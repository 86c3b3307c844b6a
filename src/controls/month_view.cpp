#include "controls/month_view.h"

#include <utility>

#include "platform/clock.h"
#include "platform/component_error.h"
#include "platform/conversions.h"

namespace kwo::controls {

namespace {

using platform::Argument;
using platform::ComponentError;

constexpr Date kNone{};

}  // namespace

KWOMonthView::KWOMonthView(component::Component& component)
    : mComponent(component),
      mTwips(TwipsPerPixel::Of(component.platform.screen)),
      mBox(component.platform),
      mDrawing(mBox, component.platform, component.locale, mTwips) {
    mComponent.SetProgramName();
}

bool KWOMonthView::Create(const HostObjectRef& pictureBox, Date& focusDate, const CreateOptions& options) {
    try {
        return Open(pictureBox, focusDate, options);
    } catch (const ComponentError& error) {
        mComponent.error.KWO_SaveError(error, {.source = u"KWOMonthView.Create", .replace = true});
        mCreated = false;
        return false;
    }
}

bool KWOMonthView::Open(const HostObjectRef& pictureBox, Date& focusDate, const CreateOptions& options) {
    if (!IsPictureBox(pictureBox)) return false;
    mBox.Assign(pictureBox);
    mParentForm = ObjectProperty(*pictureBox, u"Parent");
    PrepareBox();
    ApplyOptions(options);

    focusDate = WholeDays(focusDate);
    if (focusDate == kNone) focusDate = WholeDays(mComponent.platform.clock.Now());
    if (const Date selected = DateIn(options.selDate); selected != kNone) {
        mCreated = true;
        SelDaysAdd(selected);
        mCreated = false;
    }
    SetFocusDate(focusDate);
    ComputeLayout();
    mCreated = Draw();
    return mCreated;
}

void KWOMonthView::PrepareBox() {
    constexpr std::int16_t kUsualInterval = 150;
    constexpr std::int16_t kSolid = 0;
    constexpr std::int16_t kEtched = 3;
    mSpinInterval = kUsualInterval;
    mNotifyOnChange = false;
    mSelected.Clear();
    mBox.Let(u"AutoRedraw", true);
    mBox.Let(u"BackColor", static_cast<std::int32_t>(MonthStyle::kButtonFace));
    mBox.SetForeColour(MonthStyle::kWindowText);
    style.dayColour = mBox.ForeColour();
    style.selectedColour = MonthStyle::kHighlightText;
    style.headerColour = MonthStyle::kGreyText;
    style.captionColour = MonthStyle::kButtonText;
    mBox.Let(u"FillStyle", kSolid);
    mBox.Let(u"FontTransparent", true);
    style.captionBevel = Bevel::Of(0);
    style.headerBevel = Bevel::Of(kEtched);
    style.dayBevel = Bevel::Of(kEtched);
}

void KWOMonthView::ApplyOptions(const CreateOptions& options) {
    platform::Conversions& conversions = mComponent.platform.conversions;
    const auto isTrue = [&](const Variant& option) {
        return !platform::IsMissing(option) && conversions.ToBoolean(option);
    };
    // Intended: the interval is taken as it comes; a test of its size has always let every number pass.
    if (!platform::IsMissing(options.spinInterval)) mSpinInterval = conversions.ToInt16(options.spinInterval);
    MultiSelect = isTrue(options.canMultiSelect);
    if (!platform::IsMissing(options.notifyOnChange)) {
        mNotifyOnChange = isTrue(options.notifyOnChange);
        if (platform::IsObject(options.control)) {
            mControlWindow = conversions.To32Bits(std::get<HostObjectRef>(options.control)->Get(u"hWnd"));
        }
    }
    CanSelect = isTrue(options.canChange) || MultiSelect;
}

/// The date 0 for what is no date.
Date KWOMonthView::DateIn(const Variant& value) const {
    if (const auto* const date = std::get_if<Date>(&value)) return *date;
    const auto* const text = std::get_if<Text>(&value);
    return text != nullptr ? mComponent.platform.conversions.ParseDate(*text).value_or(kNone) : kNone;
}

void KWOMonthView::SetBevel(Bevel& bevel, std::int16_t number) {
    bevel = Bevel::Of(number);
    Resize();
}

void KWOMonthView::SetFocusDate(Date date) {
    const CalendarDay day = DayOf(date);
    mFocusDate = date;
    mFocusDay = day.day;
    mVisibleYear = day.year;
    mVisibleMonth = day.month;
}

void KWOMonthView::SetMinDate(Date date) {
    const Date day = InCalendar(WholeDays(date));
    mMinDate = day;
    mMinMonthStart = day.days <= 0 ? kNone : FirstOfMonth(day);
    // Intended: before Create no month is visible, which is earlier than any limit, and the drawing misses its box.
    if (VisibleDate(1) < mMinMonthStart) {
        SetFocusDate(day);
        ChangeMonth(0);
    }
}

void KWOMonthView::SetMaxDate(Date date) {
    const Date day = InCalendar(WholeDays(date));
    mMaxDate = day;
    mMaxMonthEnd = day.days <= 0 ? kNone : LastOfMonth(day);
    // Intended: no mirror of the other limit. It also acts in the maximum's own month, and always when it is cleared.
    constexpr std::int32_t kInNextMonth = 32;
    if (VisibleDate(kInNextMonth) > mMaxMonthEnd) {
        SetFocusDate(day);
        ChangeMonth(0);
    }
}

void KWOMonthView::ShowMonth(std::int16_t month, std::int16_t year) {
    const CalendarDay focus = DayOf(mFocusDate);
    if (month != focus.month || year != focus.year) {
        mFocusDate = InCalendar(DateOf(year, month, 1));
        mFocusDay = 1;
    }
    mVisibleYear = year;
    mVisibleMonth = month;
    // Intended: the month is stored before anything can refuse it, a limit, the form or the missing box.
    ChangeMonth(0);
}

void KWOMonthView::ChangeMonth(std::int32_t offset, Date target) {
    if (target == kNone) target = MovedByMonths(mFocusDate, offset);
    if (mMinMonthStart != kNone && target < mMinMonthStart) return;
    if (mMaxMonthEnd != kNone && target > mMaxMonthEnd) return;
    if (mNotifyOnChange && FormRefusesMonth(target)) return;
    SetFocusDate(target);
    mDrawing.Caption(mLayout, mFocusDate);
    Draw();
}

bool KWOMonthView::FormRefusesMonth(Date target) {
    const CalendarDay day = DayOf(target);
    return FormRefuses(u"OnChangeMonth", Argument{day.month, false}, Argument{day.year, false});
}

bool KWOMonthView::FormRefusesDate(Date date) {
    // Intended: the switch for notifications governs the months alone.
    return FormRefuses(u"OnChangeDate", Argument{date});
}

/// A form that has no such procedure, or whose procedure fails, refuses nothing.
template <class... Arguments>
bool KWOMonthView::FormRefuses(TextView notification, Arguments... asked) {
    if (mParentForm == nullptr) return false;
    Argument arguments[] = {{mBox.Object()}, std::move(asked)..., {false}};
    try {
        mParentForm->Notify(notification, arguments);
        return mComponent.platform.conversions.ToBoolean(arguments[std::size(arguments) - 1].value);
    } catch (const ComponentError&) {
        return false;
    }
}

void KWOMonthView::SelDaysAdd(Date date) {
    if (!mCreated) return;
    try {
        if (!mSelected.Add(date)) Draw();
    } catch (const ComponentError&) {
        // What is no day is not selected.
    }
}

void KWOMonthView::SelDaysRemove(Date date) {
    if (!mCreated) return;
    try {
        mSelected.Remove(date);
    } catch (const ComponentError&) {
        // Nor was it ever.
    }
}

bool KWOMonthView::IsSelected(Date date) const {
    try {
        return mSelected.Has(date);
    } catch (const ComponentError&) {
        return false;
    }
}

void KWOMonthView::ComputeLayout() {
    const double textHeight = mBox.TextHeight(u"JjGg|");
    const double width = mBox.Number(u"Width");
    const double height = mBox.Number(u"Height");
    mLayout = MonthLayout::Of(textHeight, width, height, mTwips);
    for (std::size_t which = 0; which < mSpin.size(); ++which)
        mSpin[which].pressed = false;
    for (std::size_t which = 0; which < mSpin.size(); ++which)
        DrawSpinButton(which, false);
}

bool KWOMonthView::Draw() {
    const MonthContent content = {mFocusDate, mFocusDay,
                                  [this](std::int16_t day) { return IsSelected(VisibleDate(day)); }};
    try {
        mDrawing.Calendar(mLayout, style, content, false);
        return true;
    } catch (const ComponentError&) {
        return false;
    }
}

}  // namespace kwo::controls
