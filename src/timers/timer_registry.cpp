#include "timers/timer_registry.h"

#include <algorithm>
#include <cmath>
#include <exception>
#include <limits>
#include <utility>

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

/// The type's largest whole number of milliseconds stands for no due time at all.
constexpr Milliseconds kNoDue{0x7FFFFFFFFFFFE950};
constexpr Milliseconds kSoonestAlarm = Milliseconds::Whole(1'000);
constexpr Milliseconds kLongestDelay = Milliseconds::Whole(30'000);
constexpr double kFurthestDays = 60;

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

/// The first due time after `now` in the row's rhythm: what was missed is left out.
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
    CancelEntries(owner, static_cast<std::int32_t>(RowType::Tick), kAllTags);
    const Milliseconds due = Sum(mClock.KWO_TimerMs(), Milliseconds::Whole(intervalMs));
    mTimerTable.Take({RowType::Tick, intervalMs, 0, OwnerRef(owner), due});
    Reschedule();
}

void MKWOTimer::AddAlarmEntry(TimerOwner& owner, Date dateTime, std::int32_t itemData, Milliseconds relativeDue) {
    // Intended: an alarm replaces the one with its tag, and with tag 0 all of its owner's.
    CancelEntries(owner, static_cast<std::int32_t>(RowType::Alarm), itemData);
    const Milliseconds due = relativeDue.scaled != 0 ? relativeDue : DueOf(dateTime);
    mTimerTable.Take({RowType::Alarm, 0, itemData, OwnerRef(owner), due});
    Reschedule();
}

void MKWOTimer::CancelEntries(TimerOwner& owner, std::int32_t timerType, std::int32_t itemData) {
    const bool everything = timerType == kAllTypes;
    const bool ticks = everything || timerType == static_cast<std::int32_t>(RowType::Tick);
    const bool alarms = everything || timerType == static_cast<std::int32_t>(RowType::Alarm);
    // The owner may end with its last row, after everything else is done.
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
        // A callee of the dispatch that is running processes messages: it arms the timer again at its end.
        StopPlatformTimer();
        return;
    }
    mInTimerProc = true;
    try {
        // The firing came too early: its delay was rounded, or the row is far off. What is left is measured again.
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
    // Intended: from the first row again after each one, for callees may have added and cancelled rows. A tick whose
    // handler takes longer than its interval is due again each time, and the rows below it wait until it is cancelled.
    for (bool any = false;; any = true) {
        const Milliseconds now = mClock.KWO_TimerMs();
        const std::int32_t row = mTimerTable.FirstDue(now);
        if (row == TimerTable::kNoRow) return any;
        Dispatch(row, now);
    }
}

void MKWOTimer::Dispatch(std::int32_t row, Milliseconds now) {
    const OwnerRef owner = mTimerTable.Row(row).timer;
    auto type = static_cast<std::int32_t>(mTimerTable.Row(row).type);
    std::int32_t itemData = mTimerTable.Row(row).itemData;
    if (mTimerTable.Row(row).type == RowType::Alarm) {
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
    // What fails from here on has nobody to hear of it.
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
        // Intended: a running timer is left alone whatever its period, and keeps firing for an empty table.
        if (mTimerId != 0) return;
        delayMs = static_cast<std::uint32_t>(frame::RoundHalfEven(kLongestDelay));
    } else if (earliest > now) {
        delayMs = static_cast<std::uint32_t>(frame::RoundHalfEven(wait));
    }
    StopPlatformTimer();
    if (earliest == kNoDue) return;
    // Intended: a platform that has no timer left is no error. The rows wait until the next call that arms the timer.
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
    // Intended: what is further ahead is pulled in. The owner may move it on when it comes.
    dateTime.days = std::min(dateTime.days, today.days + kFurthestDays);
    const Milliseconds then = mLocale.KWO_DateToFILETIME(dateTime, false);
    const Milliseconds difference = Sum(then, Milliseconds{-mLocale.KWO_DateToFILETIME(now, false).scaled});
    return Sum(mClock.KWO_TimerMs(), std::max(difference, kSoonestAlarm));
}

/// Asks the text that the date has: it is rounded to seconds, and there is none for what is no date.
bool MKWOTimer::IsTimeOfDay(Date dateTime) const {
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
