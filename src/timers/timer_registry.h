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
/// A used row holds a reference to its owner. All calls come from the component's one thread; callees of a dispatch may
/// call back into every member.
class MKWOTimer final : private platform::TimerHandler {
public:
    MKWOTimer(platform::TimerService& service, frame::MillisecondClock& clock, platform::Clock& wallClock,
              platform::Conversions& conversions, messages::MKWOLocale& locale, platform::HostApplication& host);
    ~MKWOTimer() override;
    MKWOTimer(const MKWOTimer&) = delete;
    MKWOTimer& operator=(const MKWOTimer&) = delete;

    /// A timer comes (+1) or goes (-1). When the last one goes every row is freed. Raises Overflow.
    void AdjustTimerCount(std::int16_t delta);

    /// The owner's one tick, every `intervalMs` (above 0) from now; replaces an earlier one.
    void AddTick(TimerOwner& owner, std::int32_t intervalMs);
    /// An alarm at `relativeDue` on the millisecond clock or, when that is 0, at `dateTime`. It replaces the owner's
    /// alarm with the same tag; with tag 0 it replaces all of the owner's alarms. A time of day means today; what is
    /// past or less than a second ahead comes in a second; what is further ahead than 60 days comes at the midnight of
    /// that day. Raises what a date that is none raises: the alarms to be replaced are then gone.
    void AddAlarmEntry(TimerOwner& owner, platform::Date dateTime, std::int32_t itemData,
                       platform::Milliseconds relativeDue);
    /// Frees the owner's rows: all (type 0), its tick (1), its alarms with that tag, or all of them for tag 0 (2).
    void CancelEntries(TimerOwner& owner, std::int32_t timerType, std::int32_t itemData);

    /// The thread ends, or its messages do: every row is freed, whoever owns it.
    void CancelAll();

    /// Arms the platform timer when rows wait and none runs, because the platform had none left.
    void AskAgainForARefusedTimer() noexcept;

    const TimerTable& Table() const { return mTimerTable; }
    std::int32_t InstanceCount() const { return mInstanceCount; }
    /// The platform timer that runs; 0 is none.
    std::int32_t TimerId() const { return mTimerId; }

private:
    void TimerProc() noexcept override;
    void ThreadEnds() noexcept override { CancelAll(); }
    /// False when nothing was due.
    bool DispatchDueRows();
    void Dispatch(std::int32_t row, platform::Milliseconds now);
    void Reschedule() noexcept;
    void Rearm();
    void StopPlatformTimer();
    platform::Milliseconds DueOf(platform::Date dateTime);
    bool IsTimeOfDay(platform::Date dateTime) const;
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
    std::int32_t mTimerId = 0;
    platform::Milliseconds mLastDue;
    bool mInTimerProc = false;
};

}  // namespace kwo::timers
