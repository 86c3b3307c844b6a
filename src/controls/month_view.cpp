#include "controls/month_view.h"

#include "platform/clock.h"
#include "platform/component_error.h"
#include "platform/conversions.h"

namespace kwo::controls {

namespace {

using platform::ComponentError;

constexpr Date kNone{};

}  // namespace

KWOMonthView::KWOMonthView(component::Component& component)
    : mComponent(component),
      mTwips(TwipsPerPixel::Of(component.platform.screen)),
      mBox(component.platform),
      mForm(mBox, component.platform.conversions),
      mDrawing(mBox, component.platform, component.locale, mTwips),
      mAnnotation(component) {
    mComponent.SetProgramName();
}

bool KWOMonthView::Create(const HostObjectRef& pictureBox, Date& focusDate, const CreateOptions& options) {
    try {
        return Open(pictureBox, focusDate, options);
    } catch (const ComponentError& error) {
        Fail();
        mComponent.error.KWO_SaveError(error, {.source = u"KWOMonthView.Create", .replace = true});
        return false;
    } catch (...) {
        Fail();
        throw;
    }
}

bool KWOMonthView::Open(const HostObjectRef& pictureBox, Date& focusDate, const CreateOptions& options) {
    if (!IsPictureBox(pictureBox)) return false;
    mHasFailed = false;
    mAnnotation.Release();
    mBox.Assign(pictureBox);
    const HostObjectRef form = ObjectProperty(*pictureBox, u"Parent");
    // The host may have given this object another box meanwhile, which has its own form.
    if (mBox.Object() == pictureBox) mForm.Assign(form);
    PrepareBox();
    ApplyOptions(options);

    focusDate = WholeDays(focusDate);
    if (focusDate == kNone) focusDate = WholeDays(mComponent.platform.clock.Now());
    if (const Date selected = DateIn(options.selDate); selected != kNone) {
        mCreated = true;
        SelDaysAdd(selected);
        mCreated = false;
    }
    mModel.SetFocus(focusDate);
    ComputeLayout();
    const bool isDrawn = Draw();
    // The host may have called Create meanwhile. If that call has failed, its box is the one that is half prepared.
    mCreated = isDrawn && !mHasFailed;
    if (mCreated) Annotate();
    if (!mCreated) mAnnotation.Release();
    return mCreated;
}

/// The box, if there is one, may be half prepared: nothing must be drawn on it.
void KWOMonthView::Fail() {
    mCreated = false;
    mHasFailed = true;
    mAnnotation.Release();
}

void KWOMonthView::PrepareBox() {
    constexpr std::int16_t kUsualInterval = 150;
    constexpr std::int16_t kSolid = 0;
    constexpr std::int16_t kEtched = 3;
    mSpinInterval = kUsualInterval;
    mNotifyOnChange = false;
    mModel.DeselectAll();
    mBox.Let(u"AutoRedraw", true);
    mBox.Let(u"BackColor", static_cast<std::int32_t>(MonthStyle::kButtonFace));
    mBox.SetForeColour(MonthStyle::kWindowText);
    mStyle.dayColour = mBox.ForeColour();
    mStyle.selectedColour = MonthStyle::kHighlightText;
    mStyle.headerColour = MonthStyle::kGreyText;
    mStyle.captionColour = MonthStyle::kButtonText;
    mBox.Let(u"FillStyle", kSolid);
    mBox.Let(u"FontTransparent", true);
    mStyle.captionBevel = Bevel::Of(0);
    mStyle.headerBevel = Bevel::Of(kEtched);
    mStyle.dayBevel = Bevel::Of(kEtched);
}

void KWOMonthView::ApplyOptions(const CreateOptions& options) {
    platform::Conversions& conversions = mComponent.platform.conversions;
    const auto isTrue = [&](const Variant& option) {
        return !platform::IsMissing(option) && conversions.ToBoolean(option);
    };
    // Intended: every number is accepted.
    if (!platform::IsMissing(options.spinInterval)) mSpinInterval = conversions.ToInt16(options.spinInterval);
    SetMultiSelect(isTrue(options.canMultiSelect));
    if (!platform::IsMissing(options.notifyOnChange)) {
        mNotifyOnChange = isTrue(options.notifyOnChange);
        if (platform::IsObject(options.control)) {
            // Nothing uses the number, but a host notices the call, and a value that is no number raises.
            conversions.To32Bits(std::get<HostObjectRef>(options.control)->Get(u"hWnd"));
        }
    }
    mCanSelect = isTrue(options.canChange) || MultiSelect();
}

/// The date 0 if the value is not a date.
Date KWOMonthView::DateIn(const Variant& value) const {
    if (const auto* const date = std::get_if<Date>(&value)) return *date;
    const auto* const text = std::get_if<Text>(&value);
    return text != nullptr ? mComponent.platform.conversions.ParseDate(*text).value_or(kNone) : kNone;
}

void KWOMonthView::SetBevel(Bevel& bevel, std::int16_t number) {
    bevel = Bevel::Of(number);
    Resize();
}

void KWOMonthView::SetMinDate(Date date) {
    if (mModel.SetMinDate(date)) ChangeMonth(mModel.Focus());
    TellNews();
}

void KWOMonthView::SetMaxDate(Date date) {
    if (mModel.SetMaxDate(date)) ChangeMonth(mModel.Focus());
    TellNews();
}

void KWOMonthView::ShowMonth(std::int16_t month, std::int16_t year) {
    // Intended: the month is stored before a limit, the form or the missing box can refuse it.
    mModel.ShowMonth(month, year);
    ChangeMonth(mModel.Focus());
}

void KWOMonthView::ChangeMonth(Date target) {
    if (!mModel.Allows(target)) return;
    if (mNotifyOnChange && mForm.RefusesMonth(target)) return;
    mModel.SetFocus(target);
    mDrawing.Caption(mLayout, mModel);
    Draw();
}

void KWOMonthView::SelDaysAdd(Date date) {
    if (!mCreated) return;
    if (mModel.IsSelected(date)) {
        Draw();
    } else {
        mModel.Select(date);
        TellNews();
    }
}

void KWOMonthView::SelDaysRemove(Date date) {
    if (!mCreated) return;
    mModel.Deselect(date);
    TellNews();
}

void KWOMonthView::SelDaysClear() {
    mModel.DeselectAll();
    TellNews();
}

bool KWOMonthView::Draw() {
    const bool isDrawn = mDrawing.Calendar(mLayout, mStyle, mModel);
    mShown = mModel.Focus();
    TellNews();
    return isDrawn;
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

}  // namespace kwo::controls
