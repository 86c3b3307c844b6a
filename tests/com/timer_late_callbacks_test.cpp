#include <dispex.h>

#include "timer_client.h"

namespace kwo::com_test {
namespace {

constexpr HRESULT kTypeMismatch = static_cast<HRESULT>(0x800A000D);
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
        EXPECT_EQ(Hex(S_OK), Hex(Set(mTimer.Get(), property, static_cast<IDispatch*>(&listener)).status));
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
        ASSERT_EQ(VT_BYREF | VT_VARIANT, reference.vt);
        ASSERT_EQ(S_OK, VariantCopy(reference.pvarVal, const_cast<Var*>(&value)));
    }
};

TEST_F(TimerLateCallbacks, MembersAreFoundInAnyLetterCase) {
    Sink& ticking = NewListener(L"TICK");
    Sink& alarmed = NewListener(L"alarm");
    EXPECT_EQ(&ticking, Get(mTimer.Get(), L"TimerEvents").result.pdispVal);
    EXPECT_EQ(&alarmed, Get(mTimer.Get(), L"AlarmEvents").result.pdispVal);
}

TEST_F(TimerLateCallbacks, ListenerOfOneKindIsNoneOfTheOther) {
    Sink& listener = NewSink();
    listener.member = L"Tick";
    EXPECT_EQ(Hex(kTypeMismatch), Hex(Set(mTimer.Get(), L"AlarmEvents", static_cast<IDispatch*>(&listener)).scode));
    listener.member = L"Alarm";
    EXPECT_EQ(Hex(kTypeMismatch), Hex(Set(mTimer.Get(), L"TimerEvents", static_cast<IDispatch*>(&listener)).scode));
    EXPECT_EQ(0u, listener.references);
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

    EXPECT_EQ(Hex(S_OK), Hex(Force(kTickEvent).status));
    EXPECT_EQ(1, both.calls);
    Call(mTimer.Get(), L"CancelTimers");
    EXPECT_EQ(0u, both.references);
}

TEST_F(TimerLateCallbacks, TickHandsTheTimerOver) {
    Sink& listener = NewListener(L"Tick");
    Sink& sink = NewSink();
    Connect(sink);
    listener.onInvoke = [&](DISPID, DISPPARAMS& arguments, EXCEPINFO&) {
        EXPECT_EQ(1u, arguments.cArgs);
        EXPECT_EQ(VT_BYREF | VT_VARIANT, arguments.rgvarg[0].vt);
        EXPECT_EQ(VT_DISPATCH, arguments.rgvarg[0].pvarVal->vt);
        EXPECT_EQ(mTimer.Get(), arguments.rgvarg[0].pvarVal->pdispVal);
        return S_OK;
    };
    Start(10);

    EXPECT_TRUE(ProcessUntil([&] { return listener.calls >= 3; }));
    EXPECT_EQ(DISPATCH_METHOD, listener.lastFlags & DISPATCH_METHOD);
    EXPECT_EQ(0, sink.calls) << "no event beside it";
}

TEST_F(TimerLateCallbacks, TimerMayBeReplacedInTheListenersVariable) {
    Sink& listener = NewListener(L"Tick");
    Sink& other = NewSink();
    listener.onInvoke = [&](DISPID, DISPPARAMS& arguments, EXCEPINFO&) {
        if (listener.calls == 1) Write(arguments.rgvarg[0], Var(static_cast<IDispatch*>(&other)));
        if (listener.calls == 2) Write(arguments.rgvarg[0], Var());
        return S_OK;
    };
    EXPECT_EQ(Hex(S_OK), Hex(Force(kTickEvent).status));
    EXPECT_EQ(Hex(S_OK), Hex(Force(kTickEvent).status));

    EXPECT_EQ(0u, other.references);
    Call(mTimer.Get(), L"CancelTimers");
    EXPECT_EQ(0u, mTimer.Reset()) << "no reference to the timer is lost or left";
}

TEST_F(TimerLateCallbacks, AnswersOfOtherKindsAreConverted) {
    struct Row {
        Var tag;
        Var date;
        LONG expectedTag;
        double expectedDate;
    };
    const Row rows[] = {
        {Var(L"12"), Var(2.5), 12, 2.5}, {Var(7.5), Var(3), 8, 3.0}, {Var(short{-4}), Var(L"1/2/1900"), -4, 3.0},
        {Var(true), Var(), -1, 0.0},     {Var(), Var(5LL), 0, 5.0},
    };
    Sink& listener = NewListener(L"Alarm");
    for (const Row& row : rows) {
        listener.onInvoke = [&row](DISPID, DISPPARAMS& arguments, EXCEPINFO&) {
            Write(arguments.rgvarg[1], row.tag);
            Write(arguments.rgvarg[0], row.date);
            return S_OK;
        };
        const Forced forced = ForceAlarm();
        EXPECT_EQ(Hex(S_OK), Hex(forced.outcome.status)) << &row - rows;
        EXPECT_EQ(row.expectedTag, forced.tag) << &row - rows;
        EXPECT_EQ(row.expectedDate, forced.date) << &row - rows;
    }
}

TEST_F(TimerLateCallbacks, AnswersThatCannotBeConvertedAreErrors) {
    struct Row {
        Var tag;
        Var date;
        HRESULT expected;
    };
    Sink& listener = NewListener(L"Alarm");
    const Row rows[] = {
        {Var(L"twelve"), Var(), kTypeMismatch},
        {Var(1e100), Var(), kOverflow},
        {Var(1), Var(L"never"), kTypeMismatch},
        {Var(1), Var(static_cast<IDispatch*>(&listener)), kTypeMismatch},
    };
    for (const Row& row : rows) {
        listener.onInvoke = [&row](DISPID, DISPPARAMS& arguments, EXCEPINFO&) {
            if (arguments.cArgs != 3) return DISP_E_MEMBERNOTFOUND;
            Write(arguments.rgvarg[1], row.tag);
            Write(arguments.rgvarg[0], row.date);
            return S_OK;
        };
        const Forced forced = ForceAlarm();
        EXPECT_EQ(Hex(DISP_E_EXCEPTION), Hex(forced.outcome.status)) << &row - rows;
        EXPECT_EQ(Hex(row.expected), Hex(forced.outcome.scode)) << &row - rows;
        EXPECT_EQ(3, forced.tag) << &row - rows;
        EXPECT_EQ(0, forced.date) << &row - rows;
    }
}

TEST_F(TimerLateCallbacks, ListenerIsGivenTheTagAndTheDateOfTheCaller) {
    Sink& listener = NewListener(L"Alarm");
    listener.onInvoke = [](DISPID, DISPPARAMS& arguments, EXCEPINFO&) {
        EXPECT_EQ(3, arguments.rgvarg[1].pvarVal->lVal);
        EXPECT_EQ(2.25, arguments.rgvarg[0].pvarVal->date);
        return S_OK;
    };
    LONG tag = 3;
    double date = 2.25;
    EXPECT_EQ(Hex(S_OK),
              Hex(Call(mTimer.Get(), L"TimerTick", {2, Var::Ref(&tag), Var::Reference(VT_DATE, &date)}).status));
    EXPECT_EQ(1, listener.calls);
    EXPECT_EQ(3, tag);
    EXPECT_EQ(2.25, date) << "what is not written stays";
}

TEST_F(TimerLateCallbacks, ListenerOfACompiledHostGetsTypedReferencesAtOnce) {
    Sink& listener = NewListener(L"Alarm");
    listener.interfaceId = IID_IDispatch;
    listener.onInvoke = [&](DISPID, DISPPARAMS& arguments, EXCEPINFO&) {
        EXPECT_EQ(VT_BYREF | VT_DISPATCH, arguments.rgvarg[2].vt);
        EXPECT_EQ(VT_BYREF | VT_I4, arguments.rgvarg[1].vt);
        EXPECT_EQ(VT_BYREF | VT_DATE, arguments.rgvarg[0].vt);
        *arguments.rgvarg[1].plVal += 1;
        *arguments.rgvarg[0].pdate = 6.5;
        return S_OK;
    };

    const Forced forced = ForceAlarm();
    EXPECT_EQ(1, listener.calls);
    EXPECT_EQ(4, forced.tag);
    EXPECT_EQ(6.5, forced.date);
}

TEST_F(TimerLateCallbacks, ListenerThatRefusesVariablesGetsTypedReferences) {
    Sink& listener = NewListener(L"Alarm");
    listener.onInvoke = [&](DISPID, DISPPARAMS& arguments, EXCEPINFO&) {
        if (arguments.rgvarg[0].vt == (VT_BYREF | VT_VARIANT)) return DISP_E_TYPEMISMATCH;
        EXPECT_EQ(VT_BYREF | VT_DISPATCH, arguments.rgvarg[2].vt);
        EXPECT_EQ(mTimer.Get(), *arguments.rgvarg[2].ppdispVal);
        EXPECT_EQ(VT_BYREF | VT_I4, arguments.rgvarg[1].vt);
        EXPECT_EQ(VT_BYREF | VT_DATE, arguments.rgvarg[0].vt);
        *arguments.rgvarg[1].plVal += 1;
        *arguments.rgvarg[0].pdate = 6.5;
        return S_OK;
    };

    const Forced forced = ForceAlarm();
    EXPECT_EQ(Hex(S_OK), Hex(forced.outcome.status));
    EXPECT_EQ(4, forced.tag);
    EXPECT_EQ(6.5, forced.date);
}

TEST_F(TimerLateCallbacks, RaisingListenerLosesItsRowAndIsKept) {
    Sink& listener = NewListener(L"Tick");
    listener.onInvoke = [](DISPID, DISPPARAMS&, EXCEPINFO& exception) {
        return Raising(exception, static_cast<SCODE>(0x800A0009));
    };
    Start(10);
    EXPECT_TRUE(ProcessUntil([&] { return listener.calls == 1; }));

    WaitForAnother(150);
    EXPECT_EQ(1, listener.calls);
    EXPECT_EQ(&listener, Get(mTimer.Get(), L"TimerEvents").result.pdispVal);
    EXPECT_EQ("it went wrong", Narrow(Force(kTickEvent).description));
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
    EXPECT_EQ((std::vector<LONG>{3, 5}), tags);
}

TEST_F(TimerLateCallbacks, ListenerMayCancelEverythingAndLetTheTimerGo) {
    Sink& listener = NewListener(L"Alarm");
    listener.onInvoke = [&](DISPID, DISPPARAMS& arguments, EXCEPINFO&) {
        EXPECT_EQ(Hex(S_OK), Hex(Call(arguments.rgvarg[2].pvarVal->pdispVal, L"CancelTimers").status));
        EXPECT_GE(listener.references, 1u) << "not while it runs";
        mTimer.Reset();
        Write(arguments.rgvarg[2], Var());
        return S_OK;
    };
    AddRelative(10, 1);

    EXPECT_TRUE(ProcessUntil([&] { return listener.calls == 1; }));
    EXPECT_EQ(0u, listener.references);
}

/// Knows names by its extended interface alone, as the class instances of script engines do.
class ScriptInstance final : public ClientObject<IDispatchEx> {
public:
    ScriptInstance() { interfaceId = __uuidof(IDispatchEx); }
    STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override { return E_NOTIMPL; }
    STDMETHODIMP GetDispID(BSTR name, DWORD flags, DISPID* id) override {
        EXPECT_EQ(DWORD{fdexNameCaseInsensitive}, flags);
        return ClientObject<IDispatchEx>::GetIDsOfNames(IID_NULL, &name, 1, 0, id);
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
        EXPECT_EQ(77, id);
        Write(arguments.rgvarg[0], Var::Date(1.5));
        return S_OK;
    };
    ASSERT_EQ(Hex(S_OK), Hex(Set(mTimer.Get(), L"TimerEvents", static_cast<IDispatch*>(&ticking)).status));
    ASSERT_EQ(Hex(S_OK), Hex(Set(mTimer.Get(), L"AlarmEvents", static_cast<IDispatch*>(&alarmed)).status));
    EXPECT_EQ(&ticking, Get(mTimer.Get(), L"TimerEvents").result.pdispVal);
    EXPECT_EQ(Hex(kTypeMismatch), Hex(Set(mTimer.Get(), L"TimerEvents", static_cast<IDispatch*>(&alarmed)).scode));
    Start(10);

    EXPECT_TRUE(ProcessUntil([&] { return ticking.calls >= 2; }));
    EXPECT_EQ(1.5, ForceAlarm().date);
    Call(mTimer.Get(), L"CancelTimers");
    EXPECT_EQ(0u, ticking.references);
    EXPECT_EQ(0u, alarmed.references);
}

}  // namespace
}  // namespace kwo::com_test
