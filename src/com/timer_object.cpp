#include "com/class_objects.h"
#include "com/component_object.h"
#include "kwoutil.h"

namespace kwo::com {

namespace {

constexpr MemberThunk kMembers[] = {
    Member<&_KWOTimer::get_Item>,        Member<&_KWOTimer::put_Item>,           Member<&_KWOTimer::putref_Item>,
    Member<&_KWOTimer::get_ItemData>,    Member<&_KWOTimer::put_ItemData>,       Member<&_KWOTimer::get_Enabled>,
    Member<&_KWOTimer::put_Enabled>,     Member<&_KWOTimer::get_AlarmEvents>,    Member<&_KWOTimer::putref_AlarmEvents>,
    Member<&_KWOTimer::get_TimerEvents>, Member<&_KWOTimer::putref_TimerEvents>, Member<&_KWOTimer::AddAlarm>,
    Member<&_KWOTimer::get_Interval>,    Member<&_KWOTimer::put_Interval>,       Member<&_KWOTimer::TimerTick>,
    Member<&_KWOTimer::CancelTimers>,    Member<&_KWOTimer::AddRelativeAlarm>,
};

ClassInfo& Info() {
    static ClassInfo info(CLSID_KWOTimer, IID__KWOTimer, &DIID___KWOTimer, u"KWOTimer", kMembers);
    return info;
}

class TimerObject final : public ComponentObject<_KWOTimer> {
public:
    TimerObject() : ComponentObject(Info()) { Component().SetProgramName(); }

    STDMETHODIMP get_Item(VARIANT*) override { return NotBuilt(u".Item (Get)"); }
    STDMETHODIMP put_Item(VARIANT) override { return NotBuilt(u".Item (Let)"); }
    STDMETHODIMP putref_Item(VARIANT) override { return NotBuilt(u".Item (Set)"); }
    STDMETHODIMP get_ItemData(LONG*) override { return NotBuilt(u".ItemData (Get)"); }
    STDMETHODIMP put_ItemData(LONG) override { return NotBuilt(u".ItemData (Let)"); }
    STDMETHODIMP get_Enabled(VARIANT_BOOL*) override { return NotBuilt(u".Enabled (Get)"); }
    STDMETHODIMP put_Enabled(VARIANT_BOOL*) override { return NotBuilt(u".Enabled (Let)"); }
    STDMETHODIMP get_AlarmEvents(_IKWOAlarm**) override { return NotBuilt(u".AlarmEvents (Get)"); }
    STDMETHODIMP putref_AlarmEvents(_IKWOAlarm*) override { return NotBuilt(u".AlarmEvents (Set)"); }
    STDMETHODIMP get_TimerEvents(_IKWOTimer**) override { return NotBuilt(u".TimerEvents (Get)"); }
    STDMETHODIMP putref_TimerEvents(_IKWOTimer*) override { return NotBuilt(u".TimerEvents (Set)"); }
    STDMETHODIMP AddAlarm(DATE, LONG) override { return NotBuilt(u".AddAlarm"); }
    STDMETHODIMP get_Interval(LONG*) override { return NotBuilt(u".Interval (Get)"); }
    STDMETHODIMP put_Interval(LONG) override { return NotBuilt(u".Interval (Let)"); }
    STDMETHODIMP TimerTick(TimerEventTypes*, LONG*, DATE*) override { return NotBuilt(u".TimerTick"); }
    STDMETHODIMP CancelTimers(TimerEventTypes*, LONG*) override { return NotBuilt(u".CancelTimers"); }
    STDMETHODIMP AddRelativeAlarm(LONG, LONG) override { return NotBuilt(u".AddRelativeAlarm"); }

private:
    HRESULT NotBuilt(TextView member) {
        return Run(member, [] { RaiseNotBuilt(); });
    }
};

}  // namespace

ClassEntry TimerClass() {
    return {CLSID_KWOTimer, &Make<TimerObject>};
}

}  // namespace kwo::com
