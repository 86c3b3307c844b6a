// What screen readers are told about a calendar.

#include "controls/month_view.h"

#include "frame/text_routines.h"

namespace kwo::controls {

namespace {

/// The messages for readers.
constexpr std::int32_t kSelected = 1932;
constexpr std::int32_t kSelectedDays = 1933;
constexpr std::int32_t kFirstMonth = 1934;
constexpr std::int32_t kLastMonth = 1935;

}  // namespace

void KWOMonthView::Annotate() {
    const HostObjectRef box = mBox.Object();
    const Handle window = mAnnotation.WindowOf(box);
    // The host may have called Create again meanwhile; that call counts.
    if (!mCreated || mBox.Object() != box) return;
    // A table: arrows move in both directions. Readers tell a new value of it, the day, whatever else they say.
    mAnnotation.Take(window, Role::Table);
    mTold.reset();
    TellNews();
}

void KWOMonthView::TellNews() {
    mAnnotation.Tell([&](Spoken& spoken) {
        const Date focus = mModel.Focus();
        const News news = {mShown,           focus,           mModel.IsSelected(focus), mModel.SelectedCount(),
                           mModel.MinDate(), mModel.MaxDate()};
        if (news == mTold) return;
        // What cannot be put into words is not tried again.
        mTold = news;
        Compose(spoken, news);
    });
}

void KWOMonthView::Compose(Spoken& spoken, const News& news) {
    const auto message = [&](std::int32_t number, TextView builtIn, const Text& value) {
        return mComponent.messages.TextOrBuiltIn(number, builtIn, {&value, 1});
    };
    spoken.name = mDrawing.CaptionText(news.shown);
    spoken.value = mComponent.platform.conversions.FormatDate(news.focus, u"Long Date");
    if (news.isSelected) spoken.value = message(kSelected, u"%1, selected", spoken.value);
    spoken.description =
        message(kSelectedDays, u"Selected days: %1", frame::Decimal(static_cast<std::int64_t>(news.selected)));
    // The limits are whole months.
    const auto addLimit = [&](std::int32_t number, TextView builtIn, Date limit) {
        if (limit > Date{}) spoken.description += u". " + message(number, builtIn, mDrawing.CaptionText(limit));
    };
    addLimit(kFirstMonth, u"First month: %1", news.minDate);
    addLimit(kLastMonth, u"Last month: %1", news.maxDate);
}

}  // namespace kwo::controls
