#include "com/timer_callbacks.h"

#include <array>

#include "com/script_callbacks.h"
#include "com/server/com_values.h"
#include "platform/component_error.h"
#include "platform/windows/call_failure.h"
#include "platform/windows/variant_bridge.h"

namespace kwo::com {

namespace {

using platform::Argument;
using platform::Date;
using platform::HostObjectRef;
using platform::TextView;

class EarlyBoundTick final : public HostTickCallback {
public:
    EarlyBoundTick(ComPtr<_IKWOTimer> object, _KWOTimer& timer) : mObject(std::move(object)), mTimer(timer) {}

    void Tick() override {
        ComPtr<_KWOTimer> timer(&mTimer);
        const HRESULT result = mObject->Tick(timer.InOut());
        if (FAILED(result)) platform::windows::RaiseEarlyBoundFailure(result, *mObject, IID__IKWOTimer);
    }
    IDispatch* Given() const override { return mObject.Get(); }
    _IKWOTimer* Typed() override { return mObject.Get(); }

private:
    ComPtr<_IKWOTimer> mObject;
    _KWOTimer& mTimer;
};

class EarlyBoundAlarm final : public HostAlarmCallback {
public:
    EarlyBoundAlarm(ComPtr<_IKWOAlarm> object, _KWOTimer& timer) : mObject(std::move(object)), mTimer(timer) {}

    void Alarm(std::int32_t& itemData, Date& newDateTime) override {
        ComPtr<_KWOTimer> timer(&mTimer);
        PassedNumber alarmData(itemData);
        const HRESULT result = mObject->Alarm(timer.InOut(), alarmData.Reference(), &newDateTime.days);
        if (FAILED(result)) platform::windows::RaiseEarlyBoundFailure(result, *mObject, IID__IKWOAlarm);
    }
    IDispatch* Given() const override { return mObject.Get(); }
    _IKWOAlarm* Typed() override { return mObject.Get(); }

private:
    ComPtr<_IKWOAlarm> mObject;
    _KWOTimer& mTimer;
};

/// A script's object, called by name.
class NamedTick final : public HostTickCallback {
public:
    NamedTick(HostObjectRef object, ComPtr<IDispatch> given, _KWOTimer& timer)
        : mObject(std::move(object)), mGiven(std::move(given)), mTimer(timer) {}

    void Tick() override {
        std::array arguments = {Argument{platform::windows::MakeHostObject(&mTimer)}};
        mObject->Notify(u"Tick", arguments);
    }
    IDispatch* Given() const override { return mGiven.Get(); }
    _IKWOTimer* Typed() override {
        if (!mTyped) mTyped = MakeScriptTick(mObject);
        return mTyped.Get();
    }

private:
    HostObjectRef mObject;
    ComPtr<IDispatch> mGiven;
    ComPtr<_IKWOTimer> mTyped;  ///< made when first asked for, so that it is the same one each time
    _KWOTimer& mTimer;
};

class NamedAlarm final : public HostAlarmCallback {
public:
    NamedAlarm(HostObjectRef object, ComPtr<IDispatch> given, _KWOTimer& timer, platform::Conversions& conversions)
        : mObject(std::move(object)), mGiven(std::move(given)), mTimer(timer), mConversions(conversions) {}

    void Alarm(std::int32_t& itemData, Date& newDateTime) override {
        std::array arguments = {Argument{platform::windows::MakeHostObject(&mTimer)}, Argument{itemData},
                                Argument{newDateTime}};
        try {
            mObject->Notify(u"Alarm", arguments);
        } catch (...) {
            KeepTag(arguments[1].value, itemData);
            throw;
        }
        itemData = mConversions.ToInt32(arguments[1].value);
        newDateTime = mConversions.ToDate(arguments[2].value);
    }
    IDispatch* Given() const override { return mGiven.Get(); }
    _IKWOAlarm* Typed() override {
        if (!mTyped) mTyped = MakeScriptAlarm(mObject);
        return mTyped.Get();
    }

private:
    /// Keeps the tag that a failing callee has written. If it is not a number, the tag stays as it was.
    void KeepTag(const platform::Variant& written, std::int32_t& itemData) noexcept {
        try {
            itemData = mConversions.ToInt32(written);
        } catch (...) {
        }
    }

    HostObjectRef mObject;
    ComPtr<IDispatch> mGiven;
    ComPtr<_IKWOAlarm> mTyped;  ///< made when first asked for, so that it is the same one each time
    _KWOTimer& mTimer;
    platform::Conversions& mConversions;
};

/// An object whose IDispatch knows `member`; null for any other.
HostObjectRef WithMember(const ComPtr<IDispatch>& object, TextView member) {
    const HostObjectRef host = platform::windows::MakeHostObject(object.Get());
    auto* const dispatch = dynamic_cast<platform::windows::DispatchReference*>(host.get());
    return dispatch != nullptr && dispatch->Knows(member) ? host : nullptr;
}

}  // namespace

std::shared_ptr<HostTickCallback> MakeTickCallback(IUnknown* object, _KWOTimer& timer) {
    if (object == nullptr) return nullptr;
    const ComPtr<IUnknown> given(object);
    if (auto early = given.As<_IKWOTimer>(IID__IKWOTimer)) {
        return std::make_shared<EarlyBoundTick>(std::move(early), timer);
    }
    auto late = given.As<IDispatch>(IID_IDispatch);
    if (HostObjectRef named = WithMember(late, u"Tick")) {
        return std::make_shared<NamedTick>(std::move(named), std::move(late), timer);
    }
    platform::RaiseRuntime(platform::RuntimeError::TypeMismatch);
}

std::shared_ptr<HostAlarmCallback> MakeAlarmCallback(IUnknown* object, _KWOTimer& timer,
                                                     platform::Conversions& conversions) {
    if (object == nullptr) return nullptr;
    const ComPtr<IUnknown> given(object);
    if (auto early = given.As<_IKWOAlarm>(IID__IKWOAlarm)) {
        return std::make_shared<EarlyBoundAlarm>(std::move(early), timer);
    }
    auto late = given.As<IDispatch>(IID_IDispatch);
    if (HostObjectRef named = WithMember(late, u"Alarm")) {
        return std::make_shared<NamedAlarm>(std::move(named), std::move(late), timer, conversions);
    }
    platform::RaiseRuntime(platform::RuntimeError::TypeMismatch);
}

}  // namespace kwo::com
