#include "timers/timer_registry.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "frame/rounding.h"
#include "platform/component_error.h"

namespace kwo::timers {

namespace {

using platform::Currency;
using platform::Date;
using platform::Milliseconds;
using platform::RuntimeError;
using platform::Text;
using platform::TextView;

/// The largest whole number of milliseconds of the type means that nothing is due.
constexpr Milliseconds kNoDue{0x7FFFFFFFFFFFE950};
constexpr Milliseconds kSoonestAlarm = Milliseconds::Whole(1'000);
constexpr Milliseconds kLongestDelay = Milliseconds::Whole(30'000);
constexpr double kFurthestDays = 60;

constexpr double kFirstDay = -657'434;  // 0100-01-01
constexpr double kLastDay = 2'958'465;  // 9999-12-31
constexpr double kLastSecondOfDay = 86'399.0 / 86'400;

constexpr std::int32_t kAllTypes = 0;
constexpr std::int32_t kAllTags = 0;

Milliseconds Sum(Milliseconds a, Milliseconds b) {
    constexpr std::int64_t kMost = std::numeric_limits<std::int64_t>::max();
    constexpr std::int64_t kLeast = std::numeric_limits<std::int64_t>::min();
    if (b.scaled > 0 ? a.scaled > kMost - b.scaled : a.scaled < kLeast - b.scaled) {
        platform::RaiseRuntime(RuntimeError::Overflow);
    }
    return {a.scaled + b.scaled};
}

/// The first due time after `now` in the row's rhythm. Missed ones are skipped.
Milliseconds NextDue(const TimerRow& row, Milliseconds now) {
    const std::int64_t period = Milliseconds::Whole(row.interval).scaled;
    return {row.due.scaled + ((now.scaled - row.due.scaled) / period + 1) * period};
}

}  // namespace

MKWOTimer::MKWOTimer(platform::TimerService& service, frame::MillisecondClock& clock, platform::Clock& wallClock,
                     platform::Conversions& conversions, messages::MKWOLocale& locale, platform::HostApplication& host)
    : mService(service),
      mClock(clock),
      mWallClock(wallClock),
      mConversions(conversions),
      mLocale(locale),
      mHost(host) {}

MKWOTimer::~MKWOTimer() {
    StopPlatformTimer();
}

void MKWOTimer::AdjustTimerCount(std::int16_t delta) {
    if (mTimerTable.SlotCount() == 0) mTimerTable.Grow();
    const std::int64_t count = std::int64_t{mInstanceCount} + delta;
    if (count != static_cast<std::int32_t>(count)) platform::RaiseRuntime(RuntimeError::Overflow);
    mInstanceCount = static_cast<std::int32_t>(count);
    if (mInstanceCount <= 0) CancelAll();
}

void MKWOTimer::AddTick(TimerOwner& owner, std::int32_t intervalMs) {
    CancelEntries(owner, kTick, kAllTags);
    const Milliseconds due = Sum(mClock.KWO_TimerMs(), Milliseconds::Whole(intervalMs));
    mTimerTable.Take({kTick, intervalMs, 0, OwnerRef(owner), due});
    Reschedule();
}

void MKWOTimer::AddAlarmEntry(TimerOwner& owner, Date dateTime, std::int32_t itemData, Milliseconds relativeDue) {
    // Intended: an alarm replaces the one with its tag; with the tag 0 it replaces all alarms of its owner.
    CancelEntries(owner, kAlarm, itemData);
    const Milliseconds due = relativeDue.scaled != 0 ? relativeDue : DueOf(dateTime);
    mTimerTable.Take({kAlarm, 0, itemData, OwnerRef(owner), due});
    Reschedule();
}

void MKWOTimer::CancelEntries(TimerOwner& owner, std::int32_t timerType, std::int32_t itemData) {
    const bool everything = timerType == kAllTypes;
    const bool ticks = everything || timerType == kTick;
    const bool alarms = everything || timerType == kAlarm;
    // Destroyed last: the owner may end with its last row.
    OwnerRef last;
    if (ticks) Free(TimerTable::TickOf(owner), last);
    if (alarms && (everything || itemData == kAllTags)) {
        while (TimerTable::FirstAlarmOf(owner) != TimerTable::kNoRow)
            Free(TimerTable::FirstAlarmOf(owner), last);
    } else if (alarms) {
        Free(mTimerTable.AlarmOf(owner, itemData), last);
    }
    if (mTimerTable.ActiveCount() <= 0) StopPlatformTimer();
}

void MKWOTimer::Free(std::int32_t row, OwnerRef& last) {
    if (row != TimerTable::kNoRow) last = mTimerTable.Free(row);
}

void MKWOTimer::CancelAll() {
    for (auto row = mTimerTable.FirstUsed(); row != TimerTable::kNoRow; row = mTimerTable.FirstUsed()) {
        const OwnerRef owner = mTimerTable.Row(row).timer;
        CancelEntries(*owner, kAllTypes, kAllTags);
    }
}

void MKWOTimer::TimerProc() noexcept {
    if (mInTimerProc) {
        // A handler that is running processes messages. The end of that dispatch arms the timer again.
        StopPlatformTimer();
        return;
    }
    mInTimerProc = true;
    try {
        // If nothing was due, the timer fired early: its delay was rounded, or the row is far ahead. The rest is
        // measured again.
        if (!DispatchDueRows()) mLastDue = {};
    } catch (const platform::ComponentError& error) {
        LogUnexpected(error.description);
    } catch (...) {
        LogUnexpected(u"Out of memory");
    }
    mInTimerProc = false;
    Reschedule();
}

bool MKWOTimer::DispatchDueRows() {
    // Intended: starts at the first row again after each one, because handlers may add and cancel rows. If the handler
    // of a tick takes longer than the interval, the tick is due again each time, and the rows below it wait until it is
    // cancelled.
    for (bool any = false;; any = true) {
        const Milliseconds now = mClock.KWO_TimerMs();
        const std::int32_t row = mTimerTable.FirstDue(now);
        if (row == TimerTable::kNoRow) return any;
        Dispatch(row, now);
    }
}

void MKWOTimer::Dispatch(std::int32_t row, Milliseconds now) {
    const OwnerRef owner = mTimerTable.Row(row).timer;
    std::int32_t type = mTimerTable.Row(row).type;
    std::int32_t itemData = mTimerTable.Row(row).itemData;
    if (mTimerTable.Row(row).type == kAlarm) {
        OwnerRef last;
        Free(row, last);
    } else {
        mTimerTable.SetDue(row, NextDue(mTimerTable.Row(row), now));
    }

    Date newDateTime;
    bool failed = false;
    try {
        (*owner).TimerTick(type, itemData, newDateTime);
    } catch (...) {
        failed = true;
    }
    // Nobody can be told of a failure from here on.
    try {
        if (failed) {
            CancelEntries(*owner, type, itemData);
        } else if (newDateTime.days != 0) {
            AddAlarmEntry(*owner, newDateTime, itemData, {});
        }
    } catch (...) {
    }
}

void MKWOTimer::AskAgainForARefusedTimer() noexcept {
    if (mTimerId == 0 && mTimerTable.ActiveCount() > 0) Reschedule();
}

void MKWOTimer::Reschedule() noexcept {
    if (mInTimerProc) return;
    try {
        Rearm();
    } catch (...) {
    }
}

void MKWOTimer::Rearm() {
    const Milliseconds earliest{std::min(kNoDue.scaled, mTimerTable.EarliestDue())};
    if (earliest == mLastDue && mTimerId != 0) return;
    mLastDue = earliest;

    const Milliseconds now = mClock.KWO_TimerMs();
    const Milliseconds wait{earliest > now ? earliest.scaled - now.scaled : 0};
    std::uint32_t delayMs = 1;
    if (wait > kLongestDelay) {
        // Intended: a running timer is not changed, whatever its period, and keeps firing for an empty table.
        if (mTimerId != 0) return;
        delayMs = static_cast<std::uint32_t>(frame::RoundHalfEven(kLongestDelay));
    } else if (earliest > now) {
        delayMs = static_cast<std::uint32_t>(frame::RoundHalfEven(wait));
    }
    StopPlatformTimer();
    if (earliest == kNoDue) return;
    // Intended: if the platform has no timer left, no error is raised. The rows wait until the next call that arms the
    // timer.
    mTimerId = mService.Start(delayMs, *this);
}

void MKWOTimer::StopPlatformTimer() {
    if (mTimerId == 0) return;
    mService.Stop(mTimerId);
    mTimerId = 0;
}

Milliseconds MKWOTimer::DueOf(Date dateTime) {
    const Date now = mWallClock.Now();
    const Date today{std::floor(now.days)};
    if (IsTimeOfDay(dateTime)) dateTime.days += today.days;
    // Intended: a later date becomes this one. The owner may set the alarm again when it arrives.
    dateTime.days = std::min(dateTime.days, today.days + kFurthestDays);
    const Milliseconds then = mLocale.KWO_DateToFILETIME(dateTime, false);
    const Milliseconds difference = Sum(then, Milliseconds{-mLocale.KWO_DateToFILETIME(now, false).scaled});
    return Sum(mClock.KWO_TimerMs(), std::max(difference, kSoonestAlarm));
}

/// Decides by the date's text, which is rounded to seconds. Raises TypeMismatch for an invalid date, which has no text.
bool MKWOTimer::IsTimeOfDay(Date dateTime) const {
    // Making and reading a text takes long. Only in the last second of a day can rounding name another day.
    const double day = std::trunc(dateTime.days);
    if (day >= kFirstDay && day <= kLastDay && std::fabs(dateTime.days - day) < kLastSecondOfDay) return day == 0;
    const auto date = mConversions.ParseDate(mConversions.ToText(dateTime));
    if (!date) platform::RaiseRuntime(RuntimeError::TypeMismatch);
    return std::trunc(date->days) == 0;
}

void MKWOTimer::LogUnexpected(TextView description) noexcept {
    try {
        mHost.WriteLog(u"Unexpected error in MKWOTimer.TimerProc: " + Text(description));
    } catch (...) {
    }
}

}  // namespace kwo::timers
