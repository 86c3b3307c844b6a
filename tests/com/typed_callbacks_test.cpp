#include <dispex.h>

#include "timer_client.h"
#include "timer_slots.h"

namespace kwo::com_test {
namespace {

/// A script's callback objects as compiled callers read them.
class TypedCallbacks : public TimerClient {
protected:
    void SetUp() override {
        TimerClient::SetUp();
        mSlots = As<TimerSlots>(mTimer.Get(), IdOfType(L"_KWOTimer"));
        ASSERT_TRUE(mSlots);
        TakeErrorObject();
    }
    void TearDown() override {
        mSlots.Reset();
        TimerClient::TearDown();
    }
    Sink& NewListener(const wchar_t* member) {
        Sink& listener = NewSink();
        listener.member = member;
        // An object of a script engine is known by this; none of its own members is called here.
        listener.interfaceId = __uuidof(IDispatchEx);
        const wchar_t* const property = lstrcmpiW(member, L"Tick") == 0 ? L"TimerEvents" : L"AlarmEvents";
        EXPECT_EQ(Hex(Set(mTimer.Get(), property, static_cast<IDispatch*>(&listener)).status), Hex(S_OK));
        return listener;
    }
    ComPtr<TickSlots> Tick() {
        ComPtr<TickSlots> tick;
        EXPECT_EQ(Hex(mSlots->GetTimerEvents(reinterpret_cast<IDispatch**>(tick.Out()))), Hex(S_OK));
        return tick;
    }
    ComPtr<AlarmSlots> Alarm() {
        ComPtr<AlarmSlots> alarm;
        EXPECT_EQ(Hex(mSlots->GetAlarmEvents(reinterpret_cast<IDispatch**>(alarm.Out()))), Hex(S_OK));
        return alarm;
    }
    /// The timer as an in-out argument. What is left there is released at the end.
    struct Passed {
        explicit Passed(IDispatch* timer) : object(timer) {
            if (object != nullptr) object->AddRef();
        }
        Passed(const Passed&) = delete;
        Passed& operator=(const Passed&) = delete;
        ~Passed() {
            if (object != nullptr) object->Release();
        }
        IDispatch* object;
    };

    ComPtr<TimerSlots> mSlots;
};

TEST_F(TypedCallbacks, TickCallsTheScriptsObject) {
    Sink& listener = NewListener(L"Tick");
    listener.onInvoke = [&](DISPID id, DISPPARAMS& arguments, EXCEPINFO&) {
        EXPECT_EQ(id, 77);
        EXPECT_EQ(arguments.cArgs, 1u);
        EXPECT_EQ(arguments.rgvarg[0].pvarVal->pdispVal, mTimer.Get());
        return S_OK;
    };
    Passed timer(mTimer.Get());

    EXPECT_EQ(Hex(Tick()->Tick(&timer.object)), Hex(S_OK));

    EXPECT_EQ(listener.calls, 1);
    EXPECT_EQ(timer.object, mTimer.Get());
}

TEST_F(TypedCallbacks, AlarmPassesItsArgumentsToTheScriptsObjectAndBack) {
    Sink& listener = NewListener(L"Alarm");
    listener.onInvoke = [](DISPID, DISPPARAMS& arguments, EXCEPINFO&) {
        EXPECT_EQ(arguments.rgvarg[1].pvarVal->lVal, 5);
        EXPECT_EQ(arguments.rgvarg[0].pvarVal->date, 2.5);
        arguments.rgvarg[1].pvarVal->lVal = 6;
        arguments.rgvarg[0].pvarVal->vt = VT_BSTR;
        arguments.rgvarg[0].pvarVal->bstrVal = SysAllocString(L"1/1/2001");
        return S_OK;
    };
    Passed timer(mTimer.Get());
    LONG tag = 5;
    DATE date = 2.5;

    EXPECT_EQ(Hex(Alarm()->Alarm(&timer.object, &tag, &date)), Hex(S_OK));

    EXPECT_EQ(listener.calls, 1);
    EXPECT_EQ(tag, 6);
    EXPECT_EQ(date, 36892.0);
}

TEST_F(TypedCallbacks, TheScriptMayPutAnotherTimerOrNoneInTheArgument) {
    const ComPtr<IDispatch> other = Create(L"KWOTimer");
    Sink& listener = NewListener(L"Tick");
    Var replacement(other.Get());
    listener.onInvoke = [&](DISPID, DISPPARAMS& arguments, EXCEPINFO&) {
        return VariantCopy(arguments.rgvarg[0].pvarVal, &replacement);
    };
    {
        Passed timer(mTimer.Get());
        EXPECT_EQ(Hex(Tick()->Tick(&timer.object)), Hex(S_OK));
        EXPECT_EQ(timer.object, other.Get());
        replacement = Var(static_cast<IDispatch*>(nullptr));
        EXPECT_EQ(Hex(Tick()->Tick(&timer.object)), Hex(S_OK));
        EXPECT_EQ(timer.object, nullptr);
        replacement = Var(5);
        EXPECT_EQ(Hex(Tick()->Tick(&timer.object)), "0x800A000D");
        replacement = Var(static_cast<IDispatch*>(&listener));
        EXPECT_EQ(Hex(Tick()->Tick(&timer.object)), Hex(E_NOINTERFACE)) << "an object, but no timer";
        EXPECT_EQ(timer.object, nullptr) << "as it was passed";
    }
    other->AddRef();
    EXPECT_EQ(other->Release(), 1u);
}

TEST_F(TypedCallbacks, KeepTheIdentityRules) {
    NewListener(L"Tick");
    NewListener(L"Alarm");
    const struct {
        IUnknown* object;
        const wchar_t* interfaceName;
    } rows[] = {{Tick().Get(), L"_IKWOTimer"}, {Alarm().Get(), L"_IKWOAlarm"}};
    EXPECT_EQ(Tick().Get(), rows[0].object) << "the same one at every reading";
    EXPECT_EQ(Alarm().Get(), rows[1].object);
    for (const auto& row : rows) {
        const IID own = IdOfType(row.interfaceName);
        const ComPtr<IUnknown> identity = As<IUnknown>(row.object, IID_IUnknown);
        for (const IID& from : {IID_IUnknown, IID_IDispatch, own, IID_ISupportErrorInfo}) {
            const ComPtr<IUnknown> one = As<IUnknown>(row.object, from);
            ASSERT_TRUE(one);
            EXPECT_EQ(As<IUnknown>(one.Get(), IID_IUnknown).Get(), identity.Get());
            EXPECT_EQ(As<IUnknown>(one.Get(), own).Get(), row.object);
        }
        EXPECT_FALSE(As<IUnknown>(row.object, mEvents));
    }
}

TEST_F(TypedCallbacks, AreCalledByNameAndIdentifierToo) {
    Sink& listener = NewListener(L"Tick");
    const ComPtr<IDispatch> tick = As<IDispatch>(Tick().Get(), IID_IDispatch);

    EXPECT_EQ(Hex(Call(tick.Get(), L"Tick", {mTimer.Get()}).status), Hex(S_OK));
    EXPECT_EQ(Hex(InvokeId(tick.Get(), 0x60030000, DISPATCH_METHOD, {mTimer.Get()}).status), Hex(S_OK));
    EXPECT_EQ(listener.calls, 2);
}

TEST_F(TypedCallbacks, LateCallersGetAnotherTimerOrNoneBack) {
    const ComPtr<IDispatch> other = Create(L"KWOTimer");
    Sink& listener = NewListener(L"Alarm");
    const ComPtr<IDispatch> alarm = As<IDispatch>(Alarm().Get(), IID_IDispatch);
    IDispatch* replacement = nullptr;
    listener.onInvoke = [&](DISPID, DISPPARAMS& arguments, EXCEPINFO&) {
        arguments.rgvarg[1].pvarVal->lVal = 6;
        Var fresh(replacement);
        return VariantCopy(arguments.rgvarg[2].pvarVal, &fresh);
    };
    for (IDispatch* const one : {other.Get(), static_cast<IDispatch*>(nullptr)}) {
        replacement = one;
        for (const VARTYPE type : {VT_DISPATCH, VT_UNKNOWN}) {
            Passed timer(mTimer.Get());
            LONG tag = 5;
            DATE date = 2.5;
            EXPECT_EQ(Hex(Call(alarm.Get(), L"Alarm",
                               {Var::Reference(type, &timer.object), Var::Ref(&tag), Var::Reference(VT_DATE, &date)})
                              .status),
                      Hex(S_OK))
                << type;
            EXPECT_EQ(timer.object, replacement) << type;
            EXPECT_EQ(tag, 6) << type;
        }
    }
    other->AddRef();
    EXPECT_EQ(other->Release(), 1u);
}

TEST_F(TypedCallbacks, LateBoundReadersGetTheVeryObject) {
    Sink& tick = NewListener(L"Tick");
    Sink& alarm = NewListener(L"Alarm");
    Tick();
    Alarm();

    EXPECT_EQ(Get(mTimer.Get(), L"TimerEvents").result.pdispVal, &tick);
    EXPECT_EQ(Get(mTimer.Get(), L"AlarmEvents").result.pdispVal, &alarm);
}

TEST_F(TypedCallbacks, FailuresOfTheScriptAreTheErrorObject) {
    Sink& listener = NewListener(L"Tick");
    listener.onInvoke = [](DISPID, DISPPARAMS&, EXCEPINFO& exception) {
        return Raising(exception, static_cast<SCODE>(0x800A0009));
    };
    Passed timer(mTimer.Get());

    EXPECT_EQ(Hex(Tick()->Tick(&timer.object)), "0x800A0009");

    const ErrorObject error = TakeErrorObject();
    EXPECT_EQ(error.source, L"the handler");
    EXPECT_EQ(error.description, L"it went wrong");
    EXPECT_EQ(timer.object, mTimer.Get());
}

TEST_F(TypedCallbacks, NullPlacesAreRefused) {
    NewListener(L"Tick");
    Sink& listener = NewListener(L"Alarm");
    Passed timer(mTimer.Get());
    LONG tag = 5;
    DATE date = 2.5;

    EXPECT_EQ(Hex(Tick()->Tick(nullptr)), Hex(E_POINTER));
    EXPECT_EQ(Hex(Alarm()->Alarm(nullptr, &tag, &date)), Hex(E_POINTER));
    EXPECT_EQ(Hex(Alarm()->Alarm(&timer.object, nullptr, &date)), Hex(E_POINTER));
    EXPECT_EQ(Hex(Alarm()->Alarm(&timer.object, &tag, nullptr)), Hex(E_POINTER));
    EXPECT_EQ(listener.calls, 0);
}

TEST_F(TypedCallbacks, OutliveTheTimerAndThenLetTheScriptsObjectGo) {
    Sink& listener = NewListener(L"Tick");
    ComPtr<TickSlots> tick = Tick();
    Call(mTimer.Get(), L"CancelTimers");
    mSlots.Reset();
    EXPECT_EQ(mTimer.Reset(), 0u);
    IDispatch* none = nullptr;

    EXPECT_EQ(Hex(tick->Tick(&none)), Hex(S_OK));
    EXPECT_EQ(listener.calls, 1);
    EXPECT_EQ(tick.Reset(), 0u);
    EXPECT_EQ(listener.references, 0u);
}

TEST_F(TypedCallbacks, OfOneTimerServeAnother) {
    Sink& listener = NewListener(L"Tick");
    const ComPtr<IDispatch> other = Create(L"KWOTimer");
    const ComPtr<TimerSlots> otherSlots = As<TimerSlots>(other.Get(), IdOfType(L"_KWOTimer"));
    {
        const ComPtr<TickSlots> tick = Tick();
        EXPECT_EQ(Hex(otherSlots->SetTimerEvents(tick.Get())), Hex(S_OK));
    }
    EXPECT_EQ(Hex(Call(other.Get(), L"TimerTick", {kTickEvent}).status), Hex(S_OK));

    EXPECT_EQ(listener.calls, 1);
    Call(other.Get(), L"CancelTimers");
}

}  // namespace
}  // namespace kwo::com_test
