#include "com/script_callbacks.h"

#include <array>

#include "com/class_objects.h"
#include "com/component_object.h"
#include "com/host_objects.h"
#include "component/component.h"

namespace kwo::com {

namespace {

using platform::Argument;
using platform::Date;
using platform::HostObjectRef;
using platform::Variant;

Variant TimerArgument(_KWOTimer** timer) {
    return platform::windows::MakeHostObject(Required(timer));
}

/// The callee may have replaced the timer by another one or by nothing.
void TakeTimerBack(const Variant& argument, _KWOTimer** timer) {
    const auto* const object = std::get_if<HostObjectRef>(&argument);
    if (object == nullptr) platform::RaiseRuntime(platform::RuntimeError::TypeMismatch);
    const auto before = ComPtr<_KWOTimer>::Adopt(std::exchange(*timer, NewReference<_KWOTimer>(*object)));
}

class ScriptTick final : public ComponentObject<_IKWOTimer> {
public:
    explicit ScriptTick(HostObjectRef script) : ComponentObject(TimerCallbackInfo()), mScript(std::move(script)) {}

    STDMETHODIMP Tick(_KWOTimer** timer) override {
        return Run(u".Tick", [&] {
            std::array arguments = {Argument{TimerArgument(timer)}};
            mScript->Notify(u"Tick", arguments);
            TakeTimerBack(arguments[0].value, timer);
        });
    }

private:
    HostObjectRef mScript;
};

class ScriptAlarm final : public ComponentObject<_IKWOAlarm> {
public:
    explicit ScriptAlarm(HostObjectRef script) : ComponentObject(AlarmCallbackInfo()), mScript(std::move(script)) {}

    STDMETHODIMP Alarm(_KWOTimer** timer, LONG* alarmData, DATE* newDateTime) override {
        return Run(u".Alarm", [&] {
            const std::int32_t tag = Required(alarmData);
            std::array arguments = {Argument{TimerArgument(timer)}, Argument{tag},
                                    Argument{Date{Required(newDateTime)}}};
            mScript->Notify(u"Alarm", arguments);
            platform::Conversions& conversions = Component().platform.conversions;
            *alarmData = conversions.ToInt32(arguments[1].value);
            *newDateTime = conversions.ToDate(arguments[2].value).days;
            TakeTimerBack(arguments[0].value, timer);
        });
    }

private:
    HostObjectRef mScript;
};

template <class Object, class Interface>
ComPtr<Interface> Made(HostObjectRef script) {
    return ComPtr<Interface>::Adopt(new Object(std::move(script)));
}

}  // namespace

ComPtr<_IKWOTimer> MakeScriptTick(HostObjectRef script) {
    return Made<ScriptTick, _IKWOTimer>(std::move(script));
}

ComPtr<_IKWOAlarm> MakeScriptAlarm(HostObjectRef script) {
    return Made<ScriptAlarm, _IKWOAlarm>(std::move(script));
}

}  // namespace kwo::com
