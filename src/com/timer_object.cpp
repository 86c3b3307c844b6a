#include <cstring>

#include "com/class_objects.h"
#include "com/component_object.h"
#include "com/connection_point.h"
#include "com/timer_callbacks.h"
#include "component/component.h"
#include "kwoutil.h"
#include "platform/windows/call_failure.h"
#include "platform/windows/variant_bridge.h"
#include "timer/timer.h"

namespace kwo::com {

namespace {

// Late-bound callers read the callback object as it was given, even a script's. Compiled callers read an interface that
// they can call.
HRESULT LateAlarmEvents(void* timer, void* const* arguments);
HRESULT LateTimerEvents(void* timer, void* const* arguments);

/// Zero for null. Callers pass any number, which is not read as an enumeration that lacks it.
std::int32_t NumberOf(const TimerEventTypes* type) {
    std::int32_t number = 0;
    static_assert(sizeof number == sizeof *type);
    if (type != nullptr) std::memcpy(&number, type, sizeof number);
    return number;
}

constexpr MemberThunk kTimerMembers[] = {
    Member<&_KWOTimer::get_Item>,           Member<&_KWOTimer::put_Item>,
    Member<&_KWOTimer::putref_Item>,        Member<&_KWOTimer::get_ItemData>,
    Member<&_KWOTimer::put_ItemData>,       Member<&_KWOTimer::get_Enabled>,
    Member<&_KWOTimer::put_Enabled>,        {&LateAlarmEvents, 1, 0},
    Member<&_KWOTimer::putref_AlarmEvents>, {&LateTimerEvents, 1, 0},
    Member<&_KWOTimer::putref_TimerEvents>, Member<&_KWOTimer::AddAlarm>,
    Member<&_KWOTimer::get_Interval>,       Member<&_KWOTimer::put_Interval>,
    Member<&_KWOTimer::TimerTick>,          Member<&_KWOTimer::CancelTimers>,
    Member<&_KWOTimer::AddRelativeAlarm>,
};

ClassInfo& TimerInfo() {
    static constinit ClassInfo info(CLSID_KWOTimer, IID__KWOTimer, &DIID___KWOTimer, u"KWOTimer", kTimerMembers);
    return info;
}

/// Returns a callback object to the caller, with a reference.
template <class Callback, class Interface, class Kept, class Read>
void HandOver(Interface** place, const std::shared_ptr<Kept>& callback, Read read) {
    Interface*& value = Required(place);
    value = nullptr;
    if (callback == nullptr) return;
    value = read(static_cast<Callback&>(*callback));
    value->AddRef();
}

class TimerObject final : public ComponentObject<_KWOTimer>, private timer::TimerShell {
public:
    TimerObject()
        : ComponentObject(TimerInfo()),
          mEvents(static_cast<_KWOTimer&>(*this), DIID___KWOTimer, kEvents),
          mTimer(Component(), *this) {}
    ~TimerObject() override {
        // The host's objects may call back when they are released, so they are released while every part still exists.
        mEnding = true;
        mEvents.Close();
        com_support::OwnedVariant last;
        std::swap(last, mItem);
    }

    STDMETHODIMP get_Item(VARIANT* value) override {
        return Run(u".Item (Get)", [&] { RaiseIfFailed(::VariantCopy(&Cleared(Required(value)), &mItem)); });
    }
    STDMETHODIMP put_Item(VARIANT value) override {
        return Run(u".Item (Let)", [&] { KeepItem(value); });
    }
    STDMETHODIMP putref_Item(VARIANT value) override {
        return Run(u".Item (Set)", [&] { KeepItem(value); });
    }
    STDMETHODIMP get_ItemData(LONG* value) override {
        return Run(u".ItemData (Get)", [&] { Required(value) = mItemData; });
    }
    STDMETHODIMP put_ItemData(LONG value) override {
        return Run(u".ItemData (Let)", [&] { mItemData = value; });
    }
    STDMETHODIMP get_Enabled(VARIANT_BOOL* value) override {
        return Run(u".Enabled (Get)", [&] { Required(value) = mTimer.Enabled(); });
    }
    STDMETHODIMP put_Enabled(VARIANT_BOOL* value) override {
        return Run(u".Enabled (Let)", [&] { mTimer.SetEnabled(Required(value)); });
    }
    STDMETHODIMP get_AlarmEvents(_IKWOAlarm** value) override {
        return Run(u".AlarmEvents (Get)", [&] {
            HandOver<HostAlarmCallback>(value, mTimer.AlarmEvents(), [](auto& callback) { return callback.Typed(); });
        });
    }
    HRESULT GivenAlarmEvents(IDispatch** value) {
        return Run(u".AlarmEvents (Get)", [&] {
            HandOver<HostAlarmCallback>(value, mTimer.AlarmEvents(), [](auto& callback) { return callback.Given(); });
        });
    }
    STDMETHODIMP putref_AlarmEvents(_IKWOAlarm* value) override {
        return Run(u".AlarmEvents (Set)",
                   [&] { mTimer.SetAlarmEvents(MakeAlarmCallback(value, *this, Component().platform.conversions)); });
    }
    STDMETHODIMP get_TimerEvents(_IKWOTimer** value) override {
        return Run(u".TimerEvents (Get)", [&] {
            HandOver<HostTickCallback>(value, mTimer.TimerEvents(), [](auto& callback) { return callback.Typed(); });
        });
    }
    HRESULT GivenTimerEvents(IDispatch** value) {
        return Run(u".TimerEvents (Get)", [&] {
            HandOver<HostTickCallback>(value, mTimer.TimerEvents(), [](auto& callback) { return callback.Given(); });
        });
    }
    STDMETHODIMP putref_TimerEvents(_IKWOTimer* value) override {
        return Run(u".TimerEvents (Set)", [&] { mTimer.SetTimerEvents(MakeTickCallback(value, *this)); });
    }
    STDMETHODIMP AddAlarm(DATE dateTime, LONG itemData) override {
        return Run(u".AddAlarm", [&] { mTimer.AddAlarm({dateTime}, itemData); });
    }
    STDMETHODIMP get_Interval(LONG* value) override {
        return Run(u".Interval (Get)", [&] { Required(value) = mTimer.Interval(); });
    }
    STDMETHODIMP put_Interval(LONG value) override {
        return Run(u".Interval (Let)", [&] { mTimer.SetInterval(value); });
    }
    STDMETHODIMP TimerTick(TimerEventTypes* tickType, LONG* itemData, DATE* newDateTime) override {
        return Run(u".TimerTick", [&] {
            std::int32_t type = NumberOf(tickType);
            std::int32_t tag = itemData != nullptr ? *itemData : 0;
            platform::Date date{newDateTime != nullptr ? *newDateTime : 0};
            const auto returnBoth = [&] {
                if (itemData != nullptr) *itemData = tag;
                if (newDateTime != nullptr) *newDateTime = date.days;
            };
            // Even a handler that fails may have written into the arguments.
            try {
                mTimer.TimerTick(type, tag, date);
            } catch (...) {
                returnBoth();
                throw;
            }
            returnBoth();
        });
    }
    STDMETHODIMP CancelTimers(TimerEventTypes* timerType, LONG* itemData) override {
        return Run(u".CancelTimers",
                   [&] { mTimer.CancelTimers(NumberOf(timerType), itemData != nullptr ? *itemData : 0); });
    }
    STDMETHODIMP AddRelativeAlarm(LONG interval, LONG itemData) override {
        return Run(u".AddRelativeAlarm", [&] { mTimer.AddRelativeAlarm(interval, itemData); });
    }

private:
    static constexpr DISPID kTickEvent = 1;
    static constexpr DISPID kAlarmEvent = 2;
    static constexpr Event kEvents[] = {{kTickEvent, L"Tick"}, {kAlarmEvent, L"Alarm"}};

    void* MoreInterface(REFIID id) override {
        return id == IID_IConnectionPointContainer ? static_cast<IConnectionPointContainer*>(&mEvents) : nullptr;
    }

    void Tick() override {
        VARIANT timer = ThisTimer();
        mEvents.Fire(kTickEvent, {&timer, 1});
    }
    void Alarm(std::int32_t& itemData, platform::Date& newDateTime) override {
        PassedNumber tag(itemData);
        VARIANT backwards[3];
        backwards[0].vt = VT_BYREF | VT_DATE;
        backwards[0].pdate = &newDateTime.days;
        backwards[1].vt = VT_BYREF | VT_I4;
        backwards[1].plVal = tag.Reference();
        backwards[2] = ThisTimer();
        mEvents.Fire(kAlarmEvent, backwards);
    }
    void AddShellReference() noexcept override { AddRef(); }
    void ReleaseShell() noexcept override { Release(); }

    /// The timer as an argument, without a reference: a sink that keeps it adds its own.
    VARIANT ThisTimer() {
        VARIANT timer;
        ::VariantInit(&timer);
        timer.vt = VT_DISPATCH;
        timer.pdispVal = this;
        return timer;
    }

    static VARIANT& Cleared(VARIANT& value) {
        ::VariantInit(&value);
        return value;
    }
    static void RaiseIfFailed(HRESULT result) {
        if (FAILED(result)) platform::windows::RaiseFailure(result);
    }
    void KeepItem(VARIANT& value) {
        if (mEnding) return;
        com_support::OwnedVariant kept;
        RaiseIfFailed(::VariantCopyInd(&kept, &value));
        // The old value may call back when it is released.
        std::swap(kept, mItem);
    }

    com_support::OwnedVariant mItem;
    LONG mItemData = 0;
    bool mEnding = false;
    ConnectionPoint mEvents;
    timer::KWOTimer mTimer;
};

TimerObject& ThisObject(void* timer) {
    return static_cast<TimerObject&>(*static_cast<_KWOTimer*>(timer));
}

HRESULT LateAlarmEvents(void* timer, void* const* arguments) {
    return ThisObject(timer).GivenAlarmEvents(static_cast<IDispatch**>(arguments[0]));
}

HRESULT LateTimerEvents(void* timer, void* const* arguments) {
    return ThisObject(timer).GivenTimerEvents(static_cast<IDispatch**>(arguments[0]));
}

}  // namespace

ClassEntry TimerClass() {
    return {CLSID_KWOTimer, u"KWOTimer", &Make<TimerObject>};
}

}  // namespace kwo::com
