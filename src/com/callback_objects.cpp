#include "com/class_objects.h"
#include "com/component_object.h"
#include "kwoutil.h"

namespace kwo::com {

namespace {

constexpr MemberThunk kTimerMembers[] = {Member<&_IKWOTimer::Tick>};
constexpr MemberThunk kAlarmMembers[] = {Member<&_IKWOAlarm::Alarm>};

/// Hosts implement these two interfaces. The objects here are empty reference implementations.
class TimerCallbackObject final : public ComponentObject<_IKWOTimer> {
public:
    TimerCallbackObject() : ComponentObject(TimerCallbackInfo()) {}
    STDMETHODIMP Tick(_KWOTimer**) override { return S_OK; }
};

class AlarmCallbackObject final : public ComponentObject<_IKWOAlarm> {
public:
    AlarmCallbackObject() : ComponentObject(AlarmCallbackInfo()) {}
    STDMETHODIMP Alarm(_KWOTimer**, LONG*, DATE*) override { return S_OK; }
};

}  // namespace

ClassInfo& TimerCallbackInfo() {
    static constinit ClassInfo info(CLSID_IKWOTimer, IID__IKWOTimer, nullptr, u"IKWOTimer", kTimerMembers);
    return info;
}

ClassInfo& AlarmCallbackInfo() {
    static constinit ClassInfo info(CLSID_IKWOAlarm, IID__IKWOAlarm, nullptr, u"IKWOAlarm", kAlarmMembers);
    return info;
}

ClassEntry TimerCallbackClass() {
    return {CLSID_IKWOTimer, u"IKWOTimer", &Make<TimerCallbackObject>};
}

ClassEntry AlarmCallbackClass() {
    return {CLSID_IKWOAlarm, u"IKWOAlarm", &Make<AlarmCallbackObject>};
}

}  // namespace kwo::com
