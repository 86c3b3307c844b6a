#include <dispex.h>

#include "timer_client.h"

namespace kwo::com_test {
namespace {

constexpr HRESULT kOverflow = static_cast<HRESULT>(0x800A0006);

/// Callback objects that are called by the name of their member.
class TimerLateCallbacks : public TimerClient {
protected:
    void TearDown() override {
        if (mTimer) Call(mTimer.Get(), L"CancelTimers");
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
    /// What one alarm makes of the listener's answers, and what TimerTick writes back.
    struct Forced {
        Outcome outcome;
        LONG tag = 3;
        double date = 0;
    };
    Forced ForceAlarm() {
        Forced forced;
        forced.outcome =
            Call(mTimer.Get(), L"TimerTick", {2, Var::Ref(&forced.tag), Var::Reference(VT_DATE, &forced.date)});
        return forced;
    }
    static void Write(VARIANT& reference, const Var& value) {
        ASSERT_EQ(reference.vt, VT_BYREF | VT_VARIANT);
        ASSERT_EQ(VariantCopy(reference.pvarVal, const_cast<Var*>(&value)), S_OK);
    }
};

TEST_F(TimerLateCallbacks, MembersAreFoundInAnyLetterCase) {
    Sink& ticking = NewListener(L"TICK");
    Sink& alarmed = NewListener(L"alarm");
    EXPECT_EQ(Get(mTimer.Get(), L"TimerEvents").result.pdispVal, &ticking);
    EXPECT_EQ(Get(mTimer.Get(), L"AlarmEvents").result.pdispVal, &alarmed);
}

TEST_F(TimerLateCallbacks, ListenerOfOneKindIsNoneOfTheOther) {
    Sink& listener = NewSink();
    listener.member = L"Tick";
    EXPECT_EQ(Hex(Set(mTimer.Get(), L"AlarmEvents", static_cast<IDispatch*>(&listener)).scode), Hex(kTypeMismatch));
    listener.member = L"Alarm";
    EXPECT_EQ(Hex(Set(mTimer.Get(), L"TimerEvents", static_cast<IDispatch*>(&listener)).scode), Hex(kTypeMismatch));
    EXPECT_EQ(listener.references, 0u);
}

TEST_F(TimerLateCallbacks, CompiledInterfaceIsPreferredToTheMember) {
    EarlyTick both;
    both.interfaceId = IdOfType(L"_IKWOTimer");
    both.member = L"Tick";
    both.onInvoke = [](DISPID, DISPPARAMS&, EXCEPINFO&) {
        ADD_FAILURE() << "called by name";
        return S_OK;
    };
    Set(mTimer.Get(), L"TimerEvents", static_cast<IDispatch*>(&both));

    EXPECT_EQ(Hex(Force(kTickEvent).status), Hex(S_OK));
    EXPECT_EQ(both.calls, 1);
    Call(mTimer.Get(), L"CancelTimers");
    EXPECT_EQ(both.references, 0u);
}

TEST_F(TimerLateCallbacks, TickHandsTheTimerOver) {
    Sink& listener = NewListener(L"Tick");
    Sink& sink = NewSink();
    Connect(sink);
    listener.onInvoke = [&](DISPID, DISPPARAMS& arguments, EXCEPINFO&) {
        EXPECT_EQ(arguments.cArgs, 1u);
        EXPECT_EQ(arguments.rgvarg[0].vt, VT_BYREF | VT_VARIANT);
        EXPECT_EQ(arguments.rgvarg[0].pvarVal->vt, VT_DISPATCH);
        EXPECT_EQ(arguments.rgvarg[0].pvarVal->pdispVal, mTimer.Get());
        return S_OK;
    };
    Start(10);

    EXPECT_TRUE(ProcessUntil([&] { return listener.calls >= 3; }));
    EXPECT_EQ(listener.lastFlags & DISPATCH_METHOD, DISPATCH_METHOD);
    EXPECT_EQ(sink.calls, 0) << "no event beside it";
}

TEST_F(TimerLateCallbacks, TimerMayBeReplacedInTheListenersVariable) {
    Sink& listener = NewListener(L"Tick");
    Sink& other = NewSink();
    listener.onInvoke = [&](DISPID, DISPPARAMS& arguments, EXCEPINFO&) {
        if (listener.calls == 1) Write(arguments.rgvarg[0], Var(static_cast<IDispatch*>(&other)));
        if (listener.calls == 2) Write(arguments.rgvarg[0], Var());
        return S_OK;
    };
    EXPECT_EQ(Hex(Force(kTickEvent).status), Hex(S_OK));
    EXPECT_EQ(Hex(Force(kTickEvent).status), Hex(S_OK));

    EXPECT_EQ(other.references, 0u);
    Call(mTimer.Get(), L"CancelTimers");
    EXPECT_EQ(mTimer.Reset(), 0u) << "no reference to the timer is lost or left";
}

/// A day as the user writes it.
std::wstring TextOfDay(DATE day) {
    Bstr text;
    EXPECT_EQ(Hex(VarBstrFromDate(day, LOCALE_USER_DEFAULT, 0, text.Out())), Hex(S_OK));
    return text.Text();
}

TEST_F(TimerLateCallbacks, AnswersOfOtherKindsAreConverted) {
    struct Answer {
        Var tag;
        Var date;
        LONG expectedTag;
        double expectedDate;
    };
    const Answer answers[] = {
        {Var(L"12"), Var(2.5), 12, 2.5},
        {Var(7.5), Var(3), 8, 3.0},
        {Var(short{-4}), Var(TextOfDay(3).c_str()), -4, 3.0},
        {Var(true), Var(), -1, 0.0},
        {Var(), Var(5LL), 0, 5.0},
    };
    Sink& listener = NewListener(L"Alarm");
    for (const Answer& answer : answers) {
        listener.onInvoke = [&answer](DISPID, DISPPARAMS& arguments, EXCEPINFO&) {
            Write(arguments.rgvarg[1], answer.tag);
            Write(arguments.rgvarg[0], answer.date);
            return S_OK;
        };
        const Forced forced = ForceAlarm();
        EXPECT_EQ(Hex(forced.outcome.status), Hex(S_OK)) << &answer - answers;
        EXPECT_EQ(forced.tag, answer.expectedTag) << &answer - answers;
        EXPECT_EQ(forced.date, answer.expectedDate) << &answer - answers;
    }
}

TEST_F(TimerLateCallbacks, AnswersThatCannotBeConvertedAreErrors) {
    struct Answer {
        Var tag;
        Var date;
        HRESULT expected;
    };
    Sink& listener = NewListener(L"Alarm");
    const Answer answers[] = {
        {Var(L"twelve"), Var(), kTypeMismatch},
        {Var(1e100), Var(), kOverflow},
        {Var(1), Var(L"never"), kTypeMismatch},
        {Var(1), Var(static_cast<IDispatch*>(&listener)), kTypeMismatch},
    };
    for (const Answer& answer : answers) {
        listener.onInvoke = [&answer](DISPID, DISPPARAMS& arguments, EXCEPINFO&) {
            if (arguments.cArgs != 3) return DISP_E_MEMBERNOTFOUND;
            Write(arguments.rgvarg[1], answer.tag);
            Write(arguments.rgvarg[0], answer.date);
            return S_OK;
        };
        const Forced forced = ForceAlarm();
        EXPECT_EQ(Hex(forced.outcome.status), Hex(DISP_E_EXCEPTION)) << &answer - answers;
        EXPECT_EQ(Hex(forced.outcome.scode), Hex(answer.expected)) << &answer - answers;
        EXPECT_EQ(forced.tag, answer.date.vt == VT_EMPTY ? 3 : 1) << "what could be converted, as for compiled callers";
        EXPECT_EQ(forced.date, 0) << &answer - answers;
    }
}

TEST_F(TimerLateCallbacks, ListenerIsGivenTheTagAndTheDateOfTheCaller) {
    Sink& listener = NewListener(L"Alarm");
    listener.onInvoke = [](DISPID, DISPPARAMS& arguments, EXCEPINFO&) {
        EXPECT_EQ(arguments.rgvarg[1].pvarVal->lVal, 3);
        EXPECT_EQ(arguments.rgvarg[0].pvarVal->date, 2.25);
        return S_OK;
    };
    LONG tag = 3;
    double date = 2.25;
    EXPECT_EQ(Hex(Call(mTimer.Get(), L"TimerTick", {2, Var::Ref(&tag), Var::Reference(VT_DATE, &date)}).status),
              Hex(S_OK));
    EXPECT_EQ(listener.calls, 1);
    EXPECT_EQ(tag, 3);
    EXPECT_EQ(date, 2.25) << "what is not written stays";
}

TEST_F(TimerLateCallbacks, ListenerOfACompiledHostGetsTypedReferencesAtOnce) {
    Sink& listener = NewListener(L"Alarm");
    listener.interfaceId = IID_IDispatch;
    listener.onInvoke = [&](DISPID, DISPPARAMS& arguments, EXCEPINFO&) {
        EXPECT_EQ(arguments.rgvarg[2].vt, VT_BYREF | VT_DISPATCH);
        EXPECT_EQ(arguments.rgvarg[1].vt, VT_BYREF | VT_I4);
        EXPECT_EQ(arguments.rgvarg[0].vt, VT_BYREF | VT_DATE);
        *arguments.rgvarg[1].plVal += 1;
        *arguments.rgvarg[0].pdate = 6.5;
        return S_OK;
    };

    const Forced forced = ForceAlarm();
    EXPECT_EQ(listener.calls, 1);
    EXPECT_EQ(forced.tag, 4);
    EXPECT_EQ(forced.date, 6.5);
}

TEST_F(TimerLateCallbacks, ListenerThatRefusesVariablesGetsTypedReferences) {
    Sink& listener = NewListener(L"Alarm");
    listener.onInvoke = [&](DISPID, DISPPARAMS& arguments, EXCEPINFO&) {
        if (arguments.rgvarg[0].vt == (VT_BYREF | VT_VARIANT)) return DISP_E_TYPEMISMATCH;
        EXPECT_EQ(arguments.rgvarg[2].vt, VT_BYREF | VT_DISPATCH);
        EXPECT_EQ(*arguments.rgvarg[2].ppdispVal, mTimer.Get());
        EXPECT_EQ(arguments.rgvarg[1].vt, VT_BYREF | VT_I4);
        EXPECT_EQ(arguments.rgvarg[0].vt, VT_BYREF | VT_DATE);
        *arguments.rgvarg[1].plVal += 1;
        *arguments.rgvarg[0].pdate = 6.5;
        return S_OK;
    };

    const Forced forced = ForceAlarm();
    EXPECT_EQ(Hex(forced.outcome.status), Hex(S_OK));
    EXPECT_EQ(forced.tag, 4);
    EXPECT_EQ(forced.date, 6.5);
}

TEST_F(TimerLateCallbacks, RaisingListenerLosesItsRowAndIsKept) {
    Sink& listener = NewListener(L"Tick");
    listener.onInvoke = [](DISPID, DISPPARAMS&, EXCEPINFO& exception) {
        return Raising(exception, static_cast<SCODE>(0x800A0009));
    };
    Start(10);
    EXPECT_TRUE(ProcessUntil([&] { return listener.calls == 1; }));

    WaitForAnother(150);
    EXPECT_EQ(listener.calls, 1);
    EXPECT_EQ(Get(mTimer.Get(), L"TimerEvents").result.pdispVal, &listener);
    EXPECT_EQ(Narrow(Force(kTickEvent).description), "it went wrong");
}

TEST_F(TimerLateCallbacks, TagThatARaisingListenerWroteIsTheOneThatIsCancelled) {
    Sink& listener = NewListener(L"Alarm");
    std::vector<LONG> tags;
    listener.onInvoke = [&](DISPID, DISPPARAMS& arguments, EXCEPINFO& exception) {
        tags.push_back(arguments.rgvarg[1].pvarVal->lVal);
        if (tags.back() != 3) return S_OK;
        Write(arguments.rgvarg[1], Var(4));
        return Raising(exception, static_cast<SCODE>(0x800A0009));
    };
    AddRelative(10, 3);
    AddRelative(200, 4);
    AddRelative(300, 5);

    EXPECT_TRUE(ProcessUntil([&] { return !tags.empty() && tags.back() == 5; }));
    EXPECT_EQ(tags, (std::vector<LONG>{3, 5}));
}

TEST_F(TimerLateCallbacks, ListenerMayCancelEverythingAndLetTheTimerGo) {
    Sink& listener = NewListener(L"Alarm");
    listener.onInvoke = [&](DISPID, DISPPARAMS& arguments, EXCEPINFO&) {
        EXPECT_EQ(Hex(Call(arguments.rgvarg[2].pvarVal->pdispVal, L"CancelTimers").status), Hex(S_OK));
        EXPECT_GE(listener.references, 1u) << "not while it runs";
        mTimer.Reset();
        Write(arguments.rgvarg[2], Var());
        return S_OK;
    };
    AddRelative(10, 1);

    EXPECT_TRUE(ProcessUntil([&] { return listener.calls == 1; }));
    EXPECT_EQ(listener.references, 0u);
}

/// Knows names by its extended interface alone, as the class instances of script engines do.
class ScriptInstance final : public ClientObject<IDispatchEx> {
public:
    ScriptInstance() { interfaceId = __uuidof(IDispatchEx); }
    STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override { return E_NOTIMPL; }
    STDMETHODIMP GetDispID(BSTR name, DWORD flags, DISPID* id) override {
        EXPECT_EQ(flags, DWORD{fdexNameCaseInsensitive});
        return ClientObject<IDispatchEx>::GetIDsOfNames(IID_NULL, &name, 1, LOCALE_USER_DEFAULT, id);
    }
    STDMETHODIMP InvokeEx(DISPID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*, IServiceProvider*) override {
        return E_NOTIMPL;
    }
    STDMETHODIMP DeleteMemberByName(BSTR, DWORD) override { return E_NOTIMPL; }
    STDMETHODIMP DeleteMemberByDispID(DISPID) override { return E_NOTIMPL; }
    STDMETHODIMP GetMemberProperties(DISPID, DWORD, DWORD*) override { return E_NOTIMPL; }
    STDMETHODIMP GetMemberName(DISPID, BSTR*) override { return E_NOTIMPL; }
    STDMETHODIMP GetNextDispID(DWORD, DISPID, DISPID*) override { return E_NOTIMPL; }
    STDMETHODIMP GetNameSpaceParent(IUnknown**) override { return E_NOTIMPL; }
};

TEST_F(TimerLateCallbacks, ScriptInstancesAreCalledByTheNamesOfTheirExtendedInterface) {
    ScriptInstance ticking;
    ticking.member = L"Tick";
    ScriptInstance alarmed;
    alarmed.member = L"Alarm";
    alarmed.onInvoke = [](DISPID id, DISPPARAMS& arguments, EXCEPINFO&) {
        EXPECT_EQ(id, 77);
        Write(arguments.rgvarg[0], Var::Date(1.5));
        return S_OK;
    };
    ASSERT_EQ(Hex(Set(mTimer.Get(), L"TimerEvents", static_cast<IDispatch*>(&ticking)).status), Hex(S_OK));
    ASSERT_EQ(Hex(Set(mTimer.Get(), L"AlarmEvents", static_cast<IDispatch*>(&alarmed)).status), Hex(S_OK));
    EXPECT_EQ(Get(mTimer.Get(), L"TimerEvents").result.pdispVal, &ticking);
    EXPECT_EQ(Hex(Set(mTimer.Get(), L"TimerEvents", static_cast<IDispatch*>(&alarmed)).scode), Hex(kTypeMismatch));
    Start(10);

    EXPECT_TRUE(ProcessUntil([&] { return ticking.calls >= 2; }));
    EXPECT_EQ(ForceAlarm().date, 1.5);
    Call(mTimer.Get(), L"CancelTimers");
    EXPECT_EQ(ticking.references, 0u);
    EXPECT_EQ(alarmed.references, 0u);
}

}  // namespace
}  // namespace kwo::com_test
