#pragma once

#include <cstdint>

#include "frame/millisecond_clock.h"
#include "messages/locale.h"
#include "platform/clock.h"
#include "platform/conversions.h"
#include "platform/host_application.h"
#include "platform/timer_service.h"
#include "platform/values.h"
#include "timers/timer_table.h"

namespace kwo::timers {

/// The pending ticks and alarms of all timers of a component, and the one platform timer that serves them.
///
/// A used row holds a reference to its owner, so an owner lives at least as long as its rows. All calls come from the
/// component's one thread. Rows are delivered on it too, while it dispatches messages: the lowest row number that is
/// due comes first.
/// While a row is delivered, its owner may call any member of the registry. No row is delivered inside another
/// delivery, even if the handler processes messages.
/// If the platform has no timer left, nothing is raised: the rows wait until a later call asks for one again.
class MKWOTimer final : private platform::TimerHandler {
public:
    /// Keeps references to all of these; they must outlive it. Starts no timer yet.
    MKWOTimer(platform::TimerService& service, frame::MillisecondClock& clock, platform::Clock& wallClock,
              platform::Conversions& conversions, messages::MKWOLocale& locale, platform::HostApplication& host);
    /// Stops the platform timer, so that nothing is delivered any more.
    ~MKWOTimer() override;
    MKWOTimer(const MKWOTimer&) = delete;
    MKWOTimer& operator=(const MKWOTimer&) = delete;

    /// Counts the timers: +1 when one is created, -1 when one ends.
    /// When the last one ends, all rows are freed.
    /// Raises Overflow if the count does not fit 32 bits; the count then stays.
    void AdjustTimerCount(std::int16_t delta);

    /// Adds the owner's one tick, which replaces an earlier one.
    /// It is due every `intervalMs` milliseconds (above 0) from now.
    /// Ticks missed while the program was busy are delivered once, and the next one keeps the rhythm.
    /// Raises Overflow for a due time out of range or too many rows; the earlier tick is then already cancelled.
    void AddTick(TimerOwner& owner, std::int32_t intervalMs);
    /// Adds an alarm with the tag `itemData`.
    /// It is due at `relativeDue` on the millisecond clock or, if that is 0, at the local date and time `dateTime`:
    ///
    /// A time of day without a date means today. A moment that has passed, or is less than a second ahead, becomes one
    /// second from now. A moment more than 60 days ahead becomes the midnight of the 60th day. The moment is fixed
    /// here: setting the system's clock later does not move the alarm.
    ///
    /// The alarm replaces the owner's alarm with the same tag; with the tag 0 it replaces all alarms of the owner.
    /// Raises TypeMismatch for an invalid date; the alarms to be replaced are then already cancelled.
    void AddAlarmEntry(TimerOwner& owner, platform::Date dateTime, std::int32_t itemData,
                       platform::Milliseconds relativeDue);
    /// Frees rows of the owner: all of them (type 0), its tick (kTick), or its alarms with that tag (kAlarm; the tag 0
    /// means all alarms).
    /// Other types do nothing.
    /// Each row gives its reference back, so the call may end the owner. It returns normally even then.
    void CancelEntries(TimerOwner& owner, std::int32_t timerType, std::int32_t itemData);

    /// Frees all rows of all owners. For the end of the thread, after which no row can be delivered.
    void CancelAll();

    /// Starts the platform timer if rows wait and none runs, because the platform had no timer left before.
    /// Raises nothing.
    void AskAgainForARefusedTimer() noexcept;

    /// The rows, to look at.
    const TimerTable& Table() const { return mTimerTable; }
    /// The number of timers that exist.
    std::int32_t InstanceCount() const { return mInstanceCount; }
    /// The identifier of the platform timer that runs; 0 if none runs.
    /// A timer may run for a while although no row is used.
    std::int32_t TimerId() const { return mTimerId; }

private:
    void TimerProc() noexcept override;
    void ThreadEnds() noexcept override { CancelAll(); }
    /// False if nothing was due.
    bool DispatchDueRows();
    /// Delivers one row. Its owner may then be gone, and the table changed.
    void Dispatch(std::int32_t row, platform::Milliseconds now);
    /// Arms the platform timer for the earliest row, but not while rows are delivered. Drops failures.
    void Reschedule() noexcept;
    void Rearm();
    void StopPlatformTimer();
    /// When an alarm at a local date and time is due, on the millisecond clock.
    platform::Milliseconds DueOf(platform::Date dateTime);
    /// Whether the date stands for a time of day alone.
    bool IsTimeOfDay(platform::Date dateTime) const;
    /// Frees a row, if `row` is one, and puts its reference into `last`.
    void Free(std::int32_t row, OwnerRef& last);
    void LogUnexpected(platform::TextView description) noexcept;

    platform::TimerService& mService;
    frame::MillisecondClock& mClock;
    platform::Clock& mWallClock;
    platform::Conversions& mConversions;
    messages::MKWOLocale& mLocale;
    platform::HostApplication& mHost;

    TimerTable mTimerTable;
    std::int32_t mInstanceCount = 0;
    /// 0 while no platform timer runs.
    std::int32_t mTimerId = 0;
    /// What the platform timer was armed for.
    platform::Milliseconds mLastDue;
    /// True while rows are delivered.
    bool mInTimerProc = false;
};

}  // namespace kwo::timers
