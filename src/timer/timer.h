#pragma once

#include <cstdint>
#include <memory>

#include "component/component.h"
#include "timers/timer_owner.h"

namespace kwo::timer {

/// An object of the host that receives ticks. The shell makes one around the host's object; the timer shares it.
class TickCallback {
public:
    virtual ~TickCallback() = default;
    /// One tick. Raises what the object raises.
    virtual void Tick() = 0;
};

/// An object of the host that receives alarms. The shell makes one around the host's object; the timer shares it.
class AlarmCallback {
public:
    virtual ~AlarmCallback() = default;
    /// One alarm with its tag; `newDateTime` is 0.
    /// The timer uses what is written into the arguments: a date other than 0 adds an alarm at that date with the tag
    /// that `itemData` then holds.
    /// Raises what the object raises. The alarms with the tag that `itemData` then holds are cancelled, and the date
    /// does not count.
    virtual void Alarm(std::int32_t& itemData, platform::Date& newDateTime) = 0;
};

/// The automation object around a timer: it counts the references and passes ticks and alarms on as events.
class TimerShell : public TickCallback, public AlarmCallback {
public:
    /// Keeps the object, and the timer in it, alive until ReleaseShell.
    virtual void AddShellReference() noexcept = 0;
    /// Ends one AddShellReference. The last one destroys the object and the timer.
    virtual void ReleaseShell() noexcept = 0;
};

/// A recurring tick and any number of alarms with tags, delivered to a callback object or as events.
///
///     timer.SetInterval(500);
///     timer.SetEnabled(-1);               // a tick every half second
///     timer.AddRelativeAlarm(2'000, 7);   // one alarm with the tag 7 in two seconds
///
/// Ticks arrive while the timer is enabled and the interval is above 0; the two may be set in either order. A timer
/// with pending ticks or alarms keeps its shell alive.
/// Every member runs on the thread that created the timer, and so do ticks and alarms: they come while that thread
/// dispatches messages. A handler may call any member.
class KWOTimer final : private timers::TimerOwner {
public:
    /// `shell` contains this timer and receives the events.
    /// `component` must outlive it. Sets the component's program name.
    /// Raises Overflow if there are more timers than 32 bits count.
    KWOTimer(component::Component& component, TimerShell& shell);
    /// Releases the callback objects and cancels everything, without raising.
    ~KWOTimer();

    /// The value set last, whatever 16-bit number it was; 0 at first. CancelTimers does not change it.
    std::int16_t Enabled() const { return mEnabled; }
    /// Starts the tick (any value but 0) or cancels it (0), if the interval is above 0.
    /// The value it already has does nothing.
    /// Raises what AddTick raises; Enabled then stays as it was.
    void SetEnabled(std::int16_t value);

    /// Milliseconds between ticks; 0 at first.
    std::int32_t Interval() const { return mInterval; }
    /// A value above 0 starts the tick anew if the timer is enabled.
    /// A value of 0 or less disables the timer and cancels the tick.
    /// Raises TypeMismatch if the tick cannot be started; Interval is then the new value.
    void SetInterval(std::int32_t value);

    /// The callback object for alarms; null if alarms are fired as events.
    const std::shared_ptr<AlarmCallback>& AlarmEvents() const { return mAlarmEvents; }
    /// Keeps `callback` and releases the previous one, which may run code of the host.
    /// Null brings the events back.
    /// A timer that is ending releases `callback` at once.
    void SetAlarmEvents(std::shared_ptr<AlarmCallback> callback);
    /// The callback object for ticks; null if ticks are fired as events.
    const std::shared_ptr<TickCallback>& TimerEvents() const { return mTimerEvents; }
    /// As SetAlarmEvents, for ticks.
    void SetTimerEvents(std::shared_ptr<TickCallback> callback);

    /// Adds an alarm at a local date and time with the tag `itemData`; see MKWOTimer::AddAlarmEntry for the rules.
    /// Raises TypeMismatch for every failure; see docs/intended.md.
    void AddAlarm(platform::Date dateTime, std::int32_t itemData);
    /// Adds an alarm in `intervalMs` milliseconds; 0 or less means at once, that is, at the next message of the timer.
    /// It replaces alarms as AddAlarm does.
    /// Raises TypeMismatch for every failure, or the error of loading the message table.
    void AddRelativeAlarm(std::int32_t intervalMs, std::int32_t itemData);
    /// Cancels everything (type 0), the tick (kTick), or the alarms with the tag `itemData` (kAlarm; the tag 0 means
    /// all alarms).
    /// Other types do nothing. Enabled and Interval do not change.
    /// Type 0 first releases the callback objects, so that it also cancels what they add while they end.
    void CancelTimers(std::int32_t timerType = 0, std::int32_t itemData = 0);
    /// Delivers a tick (kTick) or an alarm (kAlarm) now, to the callback object or as an event.
    /// Other types do nothing.
    /// Pending ticks and alarms stay as they are. A platform timer that the system refused before is asked for again.
    /// Raises what the handler raises. What the handler writes is in the arguments afterwards; no alarm is added for
    /// it here.
    void TimerTick(std::int32_t& tickType, std::int32_t& itemData, platform::Date& newDateTime) override;

private:
    void AddOwnerReference() noexcept override { mShell.AddShellReference(); }
    void ReleaseOwner() noexcept override { mShell.ReleaseShell(); }
    /// Saves `error` and raises it, or what converting `text` raises instead: see docs/intended.md.
    [[noreturn]] void RaiseAsTimerError(const platform::ComponentError& error, platform::TextView text,
                                        platform::TextView source);

    component::Component& mComponent;
    TimerShell& mShell;
    std::int32_t mInterval = 0;
    std::int16_t mEnabled = 0;
    /// Set by the destructor: callback objects are refused.
    bool mEnding = false;
    std::shared_ptr<AlarmCallback> mAlarmEvents;
    std::shared_ptr<TickCallback> mTimerEvents;
};

}  // namespace kwo::timer
