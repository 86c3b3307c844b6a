#pragma once

#include <cstdint>
#include <memory>

#include "component/component.h"
#include "timers/timer_owner.h"

namespace kwo::timer {

/// A host's object for ticks.
class TickCallback {
public:
    virtual ~TickCallback() = default;
    virtual void Tick() = 0;
};

/// A host's object for alarms. What it writes into the arguments reaches the registry.
class AlarmCallback {
public:
    virtual ~AlarmCallback() = default;
    virtual void Alarm(std::int32_t& itemData, platform::Date& newDateTime) = 0;
};

/// The object around a timer: its counted references and the sinks of its events.
class TimerShell : public TickCallback, public AlarmCallback {
public:
    virtual void AddShellReference() noexcept = 0;
    virtual void ReleaseShell() noexcept = 0;
};

/// Recurring ticks and any number of tagged alarms, delivered to a callback object or as events.
///
/// A tick runs only while it is enabled and the interval is above 0; the two are set in either order.
class KWOTimer final : private timers::TimerOwner {
public:
    enum EventType : std::int32_t { TimerEvent = 1, AlarmEvent = 2 };

    /// `shell` is where events go to; it outlives the timer.
    KWOTimer(component::Component& component, TimerShell& shell);
    ~KWOTimer();

    std::int16_t Enabled() const { return mEnabled; }
    void SetEnabled(std::int16_t value);

    /// Milliseconds.
    std::int32_t Interval() const { return mInterval; }
    void SetInterval(std::int32_t value);

    /// Null means that the events are fired.
    const std::shared_ptr<AlarmCallback>& AlarmEvents() const { return mAlarmEvents; }
    void SetAlarmEvents(std::shared_ptr<AlarmCallback> callback);
    const std::shared_ptr<TickCallback>& TimerEvents() const { return mTimerEvents; }
    void SetTimerEvents(std::shared_ptr<TickCallback> callback);

    void AddAlarm(platform::Date dateTime, std::int32_t itemData);
    void AddRelativeAlarm(std::int32_t intervalMs, std::int32_t itemData);
    /// Type 0 lets go of the callback objects and then stands for every row, those too that the objects add at their
    /// end; tag 0 stands for alarms of every tag.
    void CancelTimers(std::int32_t timerType = 0, std::int32_t itemData = 0);
    /// Delivers one occurrence; a type that is none does nothing.
    void TimerTick(std::int32_t& tickType, std::int32_t& itemData, platform::Date& newDateTime) override;

private:
    void AddOwnerReference() noexcept override { mShell.AddShellReference(); }
    void ReleaseOwner() noexcept override { mShell.ReleaseShell(); }
    [[noreturn]] void RaiseAsTimerError(const platform::ComponentError& error, platform::TextView text,
                                        platform::TextView source);

    component::Component& mComponent;
    TimerShell& mShell;
    std::int32_t mInterval = 0;
    std::int16_t mEnabled = 0;
    bool mEnding = false;
    std::shared_ptr<AlarmCallback> mAlarmEvents;
    std::shared_ptr<TickCallback> mTimerEvents;
};

}  // namespace kwo::timer
