#include <dispex.h>

#include "timer_client.h"

namespace kwo::com_test {
namespace {

class TimerCallbacks : public TimerClient {
protected:
    void SetUp() override {
        TimerClient::SetUp();
        mTick.interfaceId = IdOfType(L"_IKWOTimer");
        mAlarm.interfaceId = IdOfType(L"_IKWOAlarm");
    }
    void TearDown() override {
        TimerClient::TearDown();
        EXPECT_EQ(mTick.references, 0u);
        EXPECT_EQ(mAlarm.references, 0u);
    }
    void UseEarly() {
        ASSERT_EQ(Hex(Set(mTimer.Get(), L"TimerEvents", static_cast<IDispatch*>(&mTick)).status), Hex(S_OK));
        ASSERT_EQ(Hex(Set(mTimer.Get(), L"AlarmEvents", static_cast<IDispatch*>(&mAlarm)).status), Hex(S_OK));
    }
    void UseLate(Sink& object, const wchar_t* member, const wchar_t* property) {
        object.member = member;
        // An object of a script engine is known by this; none of its own members is called here.
        object.interfaceId = __uuidof(IDispatchEx);
        ASSERT_EQ(Hex(Set(mTimer.Get(), property, static_cast<IDispatch*>(&object)).status), Hex(S_OK));
    }

    EarlyTick mTick;
    EarlyAlarm mAlarm;
};

TEST_F(TimerCallbacks, EarlyBoundTickTakesThePlaceOfTheEvent) {
    UseEarly();
    Sink& sink = NewSink();
    Connect(sink);
    mTick.onTick = [&](IDispatch** timer) {
        EXPECT_EQ(*timer, mTimer.Get());
        return S_OK;
    };
    Start(20);

    EXPECT_TRUE(ProcessUntil([&] { return mTick.calls >= 3; }));
    EXPECT_EQ(sink.calls, 0);
}

TEST_F(TimerCallbacks, EarlyBoundAlarmGetsItsTagAndGivesADate) {
    UseEarly();
    mAlarm.onAlarm = [&](IDispatch** timer, LONG* tag, DATE* date) {
        EXPECT_EQ(*timer, mTimer.Get());
        EXPECT_EQ(*tag, 9);
        EXPECT_EQ(*date, 0);
        if (mAlarm.calls == 1) *date = 1.5;
        return S_OK;
    };
    AddRelative(20, 9);

    EXPECT_TRUE(ProcessUntil([&] { return mAlarm.calls >= 2; }));
}

TEST_F(TimerCallbacks, CalleeMayPutAnotherObjectOrNoneInThePlaceOfTheTimer) {
    UseEarly();
    Sink& other = NewSink();
    mTick.onTick = [&](IDispatch** timer) {
        (*timer)->Release();
        *timer = mTick.calls == 1 ? nullptr : &other;
        if (*timer != nullptr) (*timer)->AddRef();
        return S_OK;
    };
    EXPECT_EQ(Hex(Force(1).status), Hex(S_OK));
    EXPECT_EQ(Hex(Force(1).status), Hex(S_OK));

    EXPECT_EQ(other.references, 0u);
    EXPECT_EQ(Hex(Get(mTimer.Get(), L"Interval").status), Hex(S_OK)) << "the timer is as alive as before";
}

TEST_F(TimerCallbacks, EarlyBoundFailureIsRaisedWithItsCode) {
    UseEarly();
    mTick.onTick = [](IDispatch**) { return E_ACCESSDENIED; };

    const Outcome outcome = Force(1);

    EXPECT_EQ(Hex(outcome.status), Hex(DISP_E_EXCEPTION));
    EXPECT_EQ(Hex(outcome.scode), Hex(E_ACCESSDENIED));
}

/// A callback object that explains its failures on `explains`.
template <class Interface>
class Explaining : public Interface, public ISupportErrorInfo {
public:
    STDMETHODIMP QueryInterface(REFIID iid, void** object) override {
        if (iid != IID_ISupportErrorInfo) return Interface::QueryInterface(iid, object);
        *object = static_cast<ISupportErrorInfo*>(this);
        AddRef();
        return S_OK;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return Interface::AddRef(); }
    STDMETHODIMP_(ULONG) Release() override { return Interface::Release(); }
    STDMETHODIMP InterfaceSupportsErrorInfo(REFIID iid) override { return iid == explains ? S_OK : S_FALSE; }

    static HRESULT Fail() {
        ComPtr<ICreateErrorInfo> made;
        CreateErrorInfo(made.Out());
        std::wstring source = L"the callback";
        std::wstring description = L"it had enough";
        made->SetSource(source.data());
        made->SetDescription(description.data());
        SetErrorInfo(0, As<IErrorInfo>(made.Get(), IID_IErrorInfo).Get());
        return static_cast<HRESULT>(0x800A0007);
    }

    IID explains = {};
};

TEST_F(TimerCallbacks, EarlyBoundFailuresAreRaisedWithTheExplanationsThatTheyLeft) {
    Explaining<EarlyTick> tick;
    tick.explains = tick.interfaceId = IdOfType(L"_IKWOTimer");
    tick.onTick = [&](IDispatch**) { return tick.Fail(); };
    Explaining<EarlyAlarm> alarm;
    alarm.explains = alarm.interfaceId = IdOfType(L"_IKWOAlarm");
    alarm.onAlarm = [&](IDispatch**, LONG*, DATE*) { return alarm.Fail(); };
    IDispatch* const ticking = &tick;
    IDispatch* const alarmed = &alarm;
    ASSERT_EQ(Hex(Set(mTimer.Get(), L"TimerEvents", ticking).status), Hex(S_OK));
    ASSERT_EQ(Hex(Set(mTimer.Get(), L"AlarmEvents", alarmed).status), Hex(S_OK));
    for (const int type : {1, 2}) {
        const Outcome outcome = Force(type);
        EXPECT_EQ(Hex(outcome.scode), Hex(static_cast<HRESULT>(0x800A0007))) << type;
        EXPECT_EQ(outcome.source, L"the callback") << type;
        EXPECT_EQ(outcome.description, L"it had enough") << type;
    }

    tick.explains = IID_IDispatch;
    const Outcome outcome = Force(1);
    EXPECT_EQ(Hex(outcome.scode), Hex(static_cast<HRESULT>(0x800A0007)));
    EXPECT_EQ(Narrow(outcome.source), "KWOTimer.TimerTick") << "what was left is about something else";
    Call(mTimer.Get(), L"CancelTimers");
    EXPECT_EQ(tick.references, 0u);
    EXPECT_EQ(alarm.references, 0u);
}

TEST_F(TimerCallbacks, FailingCallbackCostsTheRow) {
    UseEarly();
    mTick.onTick = [](IDispatch**) { return E_FAIL; };
    Start(20);

    EXPECT_TRUE(ProcessUntil([&] { return mTick.calls >= 1; }));
    ProcessFor(200);
    EXPECT_EQ(mTick.calls, 1);
}

TEST_F(TimerCallbacks, CallbackMayCancelEverythingAndReleaseTheTimer) {
    UseEarly();
    mTick.onTick = [&](IDispatch**) {
        Call(mTimer.Get(), L"CancelTimers");
        EXPECT_GE(mTick.references, 1u) << "not while it runs";
        mTimer.Reset();
        return S_OK;
    };
    Start(20);

    EXPECT_TRUE(ProcessUntil([&] { return mTick.calls == 1; }));
    EXPECT_EQ(mTick.references, 0u);
    ProcessFor(100);
    EXPECT_EQ(mTick.calls, 1);
}

TEST_F(TimerCallbacks, LateBoundCallbackGetsReferencesToVariants) {
    Sink& listener = NewSink();
    UseLate(listener, L"Alarm", L"AlarmEvents");
    listener.onInvoke = [&](DISPID id, DISPPARAMS& arguments, EXCEPINFO&) {
        EXPECT_EQ(id, 77);
        EXPECT_EQ(arguments.cArgs, 3u);
        for (UINT at = 0; at < 3; ++at)
            EXPECT_EQ(arguments.rgvarg[at].vt, VT_BYREF | VT_VARIANT) << at;
        EXPECT_EQ(arguments.rgvarg[2].pvarVal->vt, VT_DISPATCH);
        EXPECT_EQ(arguments.rgvarg[2].pvarVal->pdispVal, mTimer.Get());
        EXPECT_EQ(arguments.rgvarg[1].pvarVal->vt, VT_I4);
        EXPECT_EQ(arguments.rgvarg[0].pvarVal->vt, VT_DATE);
        if (listener.calls == 1) {
            // As text, which is a date all the same.
            arguments.rgvarg[0].pvarVal->vt = VT_BSTR;
            arguments.rgvarg[0].pvarVal->bstrVal = SysAllocString(L"1/1/2001");
        }
        return S_OK;
    };
    AddRelative(20, 3);

    EXPECT_TRUE(ProcessUntil([&] { return listener.calls >= 2; }));
    Call(mTimer.Get(), L"CancelTimers");
    EXPECT_EQ(listener.references, 0u);
}

TEST_F(TimerCallbacks, LateBoundCallbackThatWritesNoDateLosesTheAlarm) {
    Sink& listener = NewSink();
    UseLate(listener, L"Alarm", L"AlarmEvents");
    listener.onInvoke = [&](DISPID, DISPPARAMS& arguments, EXCEPINFO&) {
        arguments.rgvarg[0].pvarVal->vt = VT_BSTR;
        arguments.rgvarg[0].pvarVal->bstrVal = SysAllocString(L"never");
        return S_OK;
    };
    const Outcome outcome = Force(2, 3);
    EXPECT_EQ(Hex(outcome.scode), Hex(static_cast<HRESULT>(0x800A000D)));

    AddRelative(20, 3);
    EXPECT_TRUE(ProcessUntil([&] { return listener.calls >= 2; }));
    ProcessFor(1'300);
    EXPECT_EQ(listener.calls, 2);
    Call(mTimer.Get(), L"CancelTimers");
}

TEST_F(TimerCallbacks, LateBoundFailureIsRaisedAsItCame) {
    Sink& listener = NewSink();
    UseLate(listener, L"Tick", L"TimerEvents");
    listener.onInvoke = [](DISPID, DISPPARAMS&, EXCEPINFO& exception) {
        return Raising(exception, static_cast<SCODE>(0x800A0009));
    };

    const Outcome outcome = Force(1);

    EXPECT_EQ(Hex(outcome.scode), Hex(static_cast<HRESULT>(0x800A0009)));
    EXPECT_EQ(outcome.source, L"the handler");
    Call(mTimer.Get(), L"CancelTimers");
}

TEST_F(TimerCallbacks, ForcedTicksOfNoKindDoNothing) {
    UseEarly();
    EXPECT_EQ(Hex(Call(mTimer.Get(), L"TimerTick").status), Hex(S_OK));
    for (const int type : {0, 3, -1})
        EXPECT_EQ(Hex(Force(type).status), Hex(S_OK));
    EXPECT_EQ(mTick.calls + mAlarm.calls, 0);

    LONG type = 2;
    LONG tag = 8;
    double date = 0;
    mAlarm.onAlarm = [](IDispatch**, LONG* given, DATE* newDate) {
        *given += 1;
        *newDate = 2.5;
        return S_OK;
    };
    EXPECT_EQ(
        Hex(Call(mTimer.Get(), L"TimerTick", {Var::Ref(&type), Var::Ref(&tag), Var::Reference(VT_DATE, &date)}).status),
        Hex(S_OK));
    EXPECT_EQ(tag, 9);
    EXPECT_EQ(date, 2.5);
}

}  // namespace
}  // namespace kwo::com_test
