#include "timer/timer.h"

#include <utility>

namespace kwo::timer {

namespace {

using platform::ComponentError;
using platform::Milliseconds;
using platform::Text;
using platform::TextView;
using timers::kAlarm;
using timers::kTick;

constexpr TextView kAlarmSource = u"KWOTimer.AddAlarm";
constexpr std::int32_t kRelativeAlarmMessage = 1929;

}  // namespace

KWOTimer::KWOTimer(component::Component& component, TimerShell& shell) : mComponent(component), mShell(shell) {
    mComponent.SetProgramName();
    mComponent.timers.AdjustTimerCount(+1);
}

KWOTimer::~KWOTimer() {
    mEnding = true;
    try {
        CancelTimers();
    } catch (...) {
    }
    try {
        mComponent.timers.AdjustTimerCount(-1);
    } catch (...) {
    }
}

void KWOTimer::SetEnabled(std::int16_t value) {
    if (value == mEnabled) return;
    if (mInterval > 0) {
        if (value != 0) {
            mComponent.timers.AddTick(*this, mInterval);
        } else {
            mComponent.timers.CancelEntries(*this, kTick, 0);
        }
    }
    mEnabled = value;
}

void KWOTimer::SetInterval(std::int32_t value) {
    try {
        mInterval = value;
        if (mEnabled == 0) return;
        if (value > 0) {
            mComponent.timers.AddTick(*this, mInterval);
        } else {
            mEnabled = 0;
            mComponent.timers.CancelEntries(*this, kTick, 0);
        }
    } catch (const ComponentError& error) {
        RaiseAsTimerError(error, u"Cannot create timer.", u"KWOTimer.Interval (Let)");
    }
}

void KWOTimer::SetAlarmEvents(std::shared_ptr<AlarmCallback> callback) {
    if (!mEnding) mAlarmEvents.swap(callback);
}

void KWOTimer::SetTimerEvents(std::shared_ptr<TickCallback> callback) {
    if (!mEnding) mTimerEvents.swap(callback);
}

void KWOTimer::AddAlarm(platform::Date dateTime, std::int32_t itemData) {
    try {
        mComponent.timers.AddAlarmEntry(*this, dateTime, itemData, {});
    } catch (const ComponentError& error) {
        RaiseAsTimerError(error, u"Error creating timer alarm.", kAlarmSource);
    }
}

void KWOTimer::AddRelativeAlarm(std::int32_t intervalMs, std::int32_t itemData) {
    try {
        const Milliseconds now = mComponent.clock.KWO_TimerMs();
        const Milliseconds due{now.scaled + Milliseconds::Whole(intervalMs).scaled};
        mComponent.timers.AddAlarmEntry(*this, {}, itemData, due);
    } catch (const ComponentError& error) {
        mComponent.messages.KWOInitialize();
        RaiseAsTimerError(error, mComponent.messages.KWO_GetMsg(kRelativeAlarmMessage), kAlarmSource);
    }
}

void KWOTimer::CancelTimers(std::int32_t timerType, std::int32_t itemData) {
    if (timerType == 0) {
        // Both are taken out before either is released: a release may call back.
        const auto timerEvents = std::exchange(mTimerEvents, nullptr);
        const auto alarmEvents = std::exchange(mAlarmEvents, nullptr);
    }
    // Intended: Enabled and Interval do not change, so Enabled reads true although no tick is left.
    mComponent.timers.CancelEntries(*this, timerType, itemData);
}

void KWOTimer::TimerTick(std::int32_t& tickType, std::int32_t& itemData, platform::Date& newDateTime) {
    if (tickType != kTick && tickType != kAlarm) return;
    mComponent.timers.AskAgainForARefusedTimer();
    // A call may make the timer release the callback object.
    if (tickType == kTick) {
        const std::shared_ptr<TickCallback> callback = mTimerEvents;
        (callback != nullptr ? *callback : mShell).Tick();
    } else {
        const std::shared_ptr<AlarmCallback> callback = mAlarmEvents;
        (callback != nullptr ? *callback : mShell).Alarm(itemData, newDateTime);
    }
}

void KWOTimer::RaiseAsTimerError(const ComponentError& error, TextView text, TextView source) {
    // Intended: the text is passed where a flag is expected. Only a number, True or False can be converted; any other
    // text raises a type mismatch here, which callers rely on.
    const bool replace = mComponent.platform.conversions.ToBoolean(Text(text));
    mComponent.error.KWO_SaveError(error, {.source = source, .replace = replace});
    mComponent.error.KWO_RaiseSavedError();
}

}  // namespace kwo::timer
