#include "frame/line_stamp.h"

#include <cmath>

#include "frame/fixed_digits.h"
#include "frame/text_routines.h"

namespace kwo::frame {

namespace {

constexpr std::int32_t kSecondsPerDay = 86'400;

}  // namespace

void LineStamp::ReadLocale() {
    mDecimalPoint = frame::DecimalPoint(mConversions);
    mShownSecond = -1;
}

void LineStamp::SetNow() {
    // A date cannot hold every second exactly, so a second that is nearly over counts as over. Nothing is rounded up: a
    // day must not end early.
    constexpr double kNearly = 0.0005;
    const auto seconds = static_cast<std::int64_t>(std::floor(mClock.Now().days * kSecondsPerDay + kNearly));
    mToday = seconds / kSecondsPerDay - (seconds % kSecondsPerDay < 0 ? 1 : 0);
    mSecond = static_cast<std::int32_t>(seconds - mToday * kSecondsPerDay);
}

Text LineStamp::RuleOfNewDay() {
    if (mDay == mToday) return {};
    mDay = mToday;
    return RuleOfDay();
}

Text LineStamp::RuleOfDay() {
    constexpr std::size_t kRuleLength = 60;
    const platform::Date today{static_cast<double>(mToday)};
    return mConversions.FormatDate(today, u"Short Date") + u" " + Text(kRuleLength, u'=') + Text(kCrLf);
}

void LineStamp::AppendTime(Text& line) {
    constexpr TextView kNothingBefore = u" 000.00";

    if (mSecond != mShownSecond) {
        mShownTime = mConversions.FormatDate({static_cast<double>(mSecond) / kSecondsPerDay}, u"hh:nn:ss");
        mShownSecond = mSecond;
    }
    const platform::Milliseconds now = mMilliseconds.KWO_TimerMs();
    line += mShownTime;
    if (mLastLine) {
        line += u' ';
        AppendFixedDigits(line, {now.scaled - mLastLine->scaled}, 3, 2, mDecimalPoint);
    } else {
        line += kNothingBefore;
    }
    mLastLine = now;
}

}  // namespace kwo::frame
