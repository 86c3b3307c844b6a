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
        EXPECT_EQ(Hex(S_OK), Hex(Set(mTimer.Get(), property, static_cast<IDispatch*>(&listener)).status));
        return listener;
    }
    ComPtr<TickSlots> Tick() {
        ComPtr<TickSlots> tick;
        EXPECT_EQ(Hex(S_OK), Hex(mSlots->GetTimerEvents(reinterpret_cast<IDispatch**>(tick.Out()))));
        return tick;
    }
    ComPtr<AlarmSlots> Alarm() {
        ComPtr<AlarmSlots> alarm;
        EXPECT_EQ(Hex(S_OK), Hex(mSlots->GetAlarmEvents(reinterpret_cast<IDispatch**>(alarm.Out()))));
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
        EXPECT_EQ(77, id);
        EXPECT_EQ(1u, arguments.cArgs);
        EXPECT_EQ(mTimer.Get(), arguments.rgvarg[0].pvarVal->pdispVal);
        return S_OK;
    };
    Passed timer(mTimer.Get());

    EXPECT_EQ(Hex(S_OK), Hex(Tick()->Tick(&timer.object)));

    EXPECT_EQ(1, listener.calls);
    EXPECT_EQ(mTimer.Get(), timer.object);
}

TEST_F(TypedCallbacks, AlarmPassesItsArgumentsToTheScriptsObjectAndBack) {
    Sink& listener = NewListener(L"Alarm");
    listener.onInvoke = [](DISPID, DISPPARAMS& arguments, EXCEPINFO&) {
        EXPECT_EQ(5, arguments.rgvarg[1].pvarVal->lVal);
        EXPECT_EQ(2.5, arguments.rgvarg[0].pvarVal->date);
        arguments.rgvarg[1].pvarVal->lVal = 6;
        arguments.rgvarg[0].pvarVal->vt = VT_BSTR;
        arguments.rgvarg[0].pvarVal->bstrVal = SysAllocString(L"1/1/2001");
        return S_OK;
    };
    Passed timer(mTimer.Get());
    LONG tag = 5;
    DATE date = 2.5;

    EXPECT_EQ(Hex(S_OK), Hex(Alarm()->Alarm(&timer.object, &tag, &date)));

    EXPECT_EQ(1, listener.calls);
    EXPECT_EQ(6, tag);
    EXPECT_EQ(36892.0, date);
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
        EXPECT_EQ(Hex(S_OK), Hex(Tick()->Tick(&timer.object)));
        EXPECT_EQ(other.Get(), timer.object);
        replacement = Var(static_cast<IDispatch*>(nullptr));
        EXPECT_EQ(Hex(S_OK), Hex(Tick()->Tick(&timer.object)));
        EXPECT_EQ(nullptr, timer.object);
        replacement = Var(5);
        EXPECT_EQ("0x800A000D", Hex(Tick()->Tick(&timer.object)));
    }
    other->AddRef();
    EXPECT_EQ(1u, other->Release());
}

TEST_F(TypedCallbacks, KeepTheIdentityRules) {
    NewListener(L"Tick");
    NewListener(L"Alarm");
    const struct {
        IUnknown* object;
        const wchar_t* interfaceName;
    } rows[] = {{Tick().Get(), L"_IKWOTimer"}, {Alarm().Get(), L"_IKWOAlarm"}};
    EXPECT_EQ(rows[0].object, Tick().Get()) << "the same one at every reading";
    EXPECT_EQ(rows[1].object, Alarm().Get());
    for (const auto& row : rows) {
        const IID own = IdOfType(row.interfaceName);
        const ComPtr<IUnknown> identity = As<IUnknown>(row.object, IID_IUnknown);
        for (const IID& from : {IID_IUnknown, IID_IDispatch, own, IID_ISupportErrorInfo}) {
            const ComPtr<IUnknown> one = As<IUnknown>(row.object, from);
            ASSERT_TRUE(one);
            EXPECT_EQ(identity.Get(), As<IUnknown>(one.Get(), IID_IUnknown).Get());
            EXPECT_EQ(row.object, As<IUnknown>(one.Get(), own).Get());
        }
        EXPECT_FALSE(As<IUnknown>(row.object, mEvents));
    }
}

TEST_F(TypedCallbacks, AreCalledByNameAndIdentifierToo) {
    Sink& listener = NewListener(L"Tick");
    const ComPtr<IDispatch> tick = As<IDispatch>(Tick().Get(), IID_IDispatch);

    EXPECT_EQ(Hex(S_OK), Hex(Call(tick.Get(), L"Tick", {mTimer.Get()}).status));
    EXPECT_EQ(Hex(S_OK), Hex(InvokeId(tick.Get(), 0x60030000, DISPATCH_METHOD, {mTimer.Get()}).status));
    EXPECT_EQ(2, listener.calls);
}

TEST_F(TypedCallbacks, LateBoundReadersGetTheVeryObject) {
    Sink& tick = NewListener(L"Tick");
    Sink& alarm = NewListener(L"Alarm");
    Tick();
    Alarm();

    EXPECT_EQ(&tick, Get(mTimer.Get(), L"TimerEvents").result.pdispVal);
    EXPECT_EQ(&alarm, Get(mTimer.Get(), L"AlarmEvents").result.pdispVal);
}

TEST_F(TypedCallbacks, FailuresOfTheScriptAreTheErrorObject) {
    Sink& listener = NewListener(L"Tick");
    listener.onInvoke = [](DISPID, DISPPARAMS&, EXCEPINFO& exception) {
        return Raising(exception, static_cast<SCODE>(0x800A0009));
    };
    Passed timer(mTimer.Get());

    EXPECT_EQ("0x800A0009", Hex(Tick()->Tick(&timer.object)));

    const ErrorObject error = TakeErrorObject();
    EXPECT_EQ(L"the handler", error.source);
    EXPECT_EQ(L"it went wrong", error.description);
    EXPECT_EQ(mTimer.Get(), timer.object);
}

TEST_F(TypedCallbacks, NullPlacesAreRefused) {
    NewListener(L"Tick");
    Sink& listener = NewListener(L"Alarm");
    Passed timer(mTimer.Get());
    LONG tag = 5;
    DATE date = 2.5;

    EXPECT_EQ(Hex(E_POINTER), Hex(Tick()->Tick(nullptr)));
    EXPECT_EQ(Hex(E_POINTER), Hex(Alarm()->Alarm(nullptr, &tag, &date)));
    EXPECT_EQ(Hex(E_POINTER), Hex(Alarm()->Alarm(&timer.object, nullptr, &date)));
    EXPECT_EQ(Hex(E_POINTER), Hex(Alarm()->Alarm(&timer.object, &tag, nullptr)));
    EXPECT_EQ(0, listener.calls);
}

TEST_F(TypedCallbacks, OutliveTheTimerAndThenLetTheScriptsObjectGo) {
    Sink& listener = NewListener(L"Tick");
    ComPtr<TickSlots> tick = Tick();
    Call(mTimer.Get(), L"CancelTimers");
    mSlots.Reset();
    EXPECT_EQ(0u, mTimer.Reset());
    IDispatch* none = nullptr;

    EXPECT_EQ(Hex(S_OK), Hex(tick->Tick(&none)));
    EXPECT_EQ(1, listener.calls);
    EXPECT_EQ(0u, tick.Reset());
    EXPECT_EQ(0u, listener.references);
}

TEST_F(TypedCallbacks, OfOneTimerServeAnother) {
    Sink& listener = NewListener(L"Tick");
    const ComPtr<IDispatch> other = Create(L"KWOTimer");
    const ComPtr<TimerSlots> otherSlots = As<TimerSlots>(other.Get(), IdOfType(L"_KWOTimer"));
    {
        const ComPtr<TickSlots> tick = Tick();
        EXPECT_EQ(Hex(S_OK), Hex(otherSlots->SetTimerEvents(tick.Get())));
    }
    EXPECT_EQ(Hex(S_OK), Hex(Call(other.Get(), L"TimerTick", {kTickEvent}).status));

    EXPECT_EQ(1, listener.calls);
    Call(other.Get(), L"CancelTimers");
}

}  // namespace
}  // namespace kwo::com_test
