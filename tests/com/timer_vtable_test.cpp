#include <climits>
#include <limits>

#include "timer_client.h"
#include "timer_slots.h"

namespace kwo::com_test {
namespace {

constexpr HRESULT kTypeMismatch = static_cast<HRESULT>(0x800A000D);

/// The timer as a compiled client holds it.
class TimerVtable : public TimerClient {
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
    Var Item() {
        Var item;
        EXPECT_EQ(Hex(S_OK), Hex(mSlots->GetItem(&item)));
        return item;
    }
    HRESULT Enable(VARIANT_BOOL value) {
        const HRESULT status = mSlots->LetEnabled(&value);
        return status;
    }
    VARIANT_BOOL Enabled() {
        VARIANT_BOOL value = 55;
        EXPECT_EQ(Hex(S_OK), Hex(mSlots->GetEnabled(&value)));
        return value;
    }

    ComPtr<TimerSlots> mSlots;
};

TEST_F(TimerVtable, ItemIsEmptyAtFirstAndKeepsWhatItIsGiven) {
    EXPECT_EQ(VT_EMPTY, Item().vt);
    ASSERT_EQ(Hex(S_OK), Hex(mSlots->LetItem(Var(L"text"))));
    EXPECT_EQ(L"text", Item().Text());
    ASSERT_EQ(Hex(S_OK), Hex(mSlots->SetItem(Var(5'000'000'000LL))));
    EXPECT_EQ(VT_I8, Item().vt);
    EXPECT_EQ(5'000'000'000LL, Item().llVal);
}

TEST_F(TimerVtable, ItemTakesACopyThroughReferences) {
    Var variable(L"first");
    ASSERT_EQ(Hex(S_OK), Hex(mSlots->LetItem(Var::Ref(&variable))));
    variable = Var(L"second");
    EXPECT_EQ(L"first", Item().Text());

    IDispatch* object = &NewSink();
    ASSERT_EQ(Hex(S_OK), Hex(mSlots->SetItem(Var::Reference(VT_DISPATCH, &object))));
    EXPECT_EQ(VT_DISPATCH, Item().vt);
    EXPECT_EQ(object, Item().pdispVal);
    EXPECT_EQ(1u, mSinks.front().references);
    ASSERT_EQ(Hex(S_OK), Hex(mSlots->LetItem(Var())));
    EXPECT_EQ(0u, mSinks.front().references);
}

TEST_F(TimerVtable, ItemCountsTheObjectsOfAnArray) {
    Sink& object = NewSink();
    Var array;
    array.vt = VT_ARRAY | VT_DISPATCH;
    array.parray = SafeArrayCreateVector(VT_DISPATCH, -3, 2);
    LONG index = -2;
    ASSERT_EQ(Hex(S_OK), Hex(SafeArrayPutElement(array.parray, &index, static_cast<IDispatch*>(&object))));
    ASSERT_EQ(Hex(S_OK), Hex(mSlots->LetItem(array)));
    EXPECT_EQ(2u, object.references);
    {
        const Var item = Item();
        ASSERT_EQ(VT_ARRAY | VT_DISPATCH, item.vt);
        EXPECT_EQ(-3, item.parray->rgsabound[0].lLbound);
        EXPECT_EQ(3u, object.references);
    }
    array = Var();
    EXPECT_EQ(1u, object.references);
    ASSERT_EQ(Hex(S_OK), Hex(mSlots->LetItem(Var())));
    EXPECT_EQ(0u, object.references);
}

TEST_F(TimerVtable, ItemThatCannotBeCopiedLeavesTheOneBefore) {
    ASSERT_EQ(Hex(S_OK), Hex(mSlots->LetItem(Var(7))));
    VARIANT broken = {};
    broken.vt = 0x0FFE;

    EXPECT_TRUE(FAILED(mSlots->LetItem(broken)));
    EXPECT_EQ("KWOTimer.Item (Let)", Narrow(TakeErrorObject().source));
    EXPECT_TRUE(FAILED(mSlots->SetItem(broken)));
    EXPECT_EQ("KWOTimer.Item (Set)", Narrow(TakeErrorObject().source));
    EXPECT_EQ(7, Item().lVal);
}

/// Reads the timer's item while the timer lets it go.
class CuriousItem final : public ClientObject<IDispatch> {
public:
    STDMETHODIMP_(ULONG) Release() override {
        const ULONG left = ClientObject<IDispatch>::Release();
        if (left == 0 && onEnd) onEnd();
        return left;
    }
    std::function<void()> onEnd;
};

TEST_F(TimerVtable, ItemThatEndsSeesItsSuccessor) {
    CuriousItem first;
    LONG seen = 0;
    ASSERT_EQ(Hex(S_OK), Hex(mSlots->SetItem(Var(static_cast<IDispatch*>(&first)))));
    first.onEnd = [&] { seen = Item().lVal; };

    ASSERT_EQ(Hex(S_OK), Hex(mSlots->LetItem(Var(8))));
    EXPECT_EQ(8, seen);
    EXPECT_EQ(0u, first.references);
    first.onEnd = nullptr;
}

TEST_F(TimerVtable, ItemThatEndsMayReleaseTheTimer) {
    CuriousItem first;
    ASSERT_EQ(Hex(S_OK), Hex(mSlots->SetItem(Var(static_cast<IDispatch*>(&first)))));
    TimerSlots* const slots = mSlots.Get();
    first.onEnd = [&] {
        mTimer.Reset();
        mSlots.Reset();
    };

    EXPECT_EQ(Hex(S_OK), Hex(slots->LetItem(Var(8))));
    EXPECT_FALSE(mTimer);
}

TEST_F(TimerVtable, NumbersOfBothEndsAreKept) {
    LONG value = 99;
    EXPECT_EQ(Hex(S_OK), Hex(mSlots->GetInterval(&value)));
    EXPECT_EQ(0, value);
    value = 99;
    EXPECT_EQ(Hex(S_OK), Hex(mSlots->GetItemData(&value)));
    EXPECT_EQ(0, value);
    for (const LONG number : {LONG_MIN, -1L, 0L, 1L, LONG_MAX}) {
        EXPECT_EQ(Hex(S_OK), Hex(mSlots->LetInterval(number)));
        EXPECT_EQ(Hex(S_OK), Hex(mSlots->LetItemData(number / 2)));
        EXPECT_EQ(Hex(S_OK), Hex(mSlots->GetInterval(&value)));
        EXPECT_EQ(number, value);
        EXPECT_EQ(Hex(S_OK), Hex(mSlots->GetItemData(&value)));
        EXPECT_EQ(number / 2, value);
    }
}

TEST_F(TimerVtable, LongestIntervalIsTakenWhileEnabled) {
    EXPECT_EQ(Hex(S_OK), Hex(Enable(VARIANT_TRUE)));
    EXPECT_EQ(Hex(S_OK), Hex(mSlots->LetInterval(LONG_MAX)));
    EXPECT_EQ(VARIANT_TRUE, Enabled());
}

TEST_F(TimerVtable, EnabledKeepsAllSixteenBitsAndLeavesTheCallersVariable) {
    EXPECT_EQ(0, Enabled());
    for (const VARIANT_BOOL given : {VARIANT_BOOL{1}, VARIANT_TRUE, VARIANT_BOOL{SHRT_MIN}, VARIANT_BOOL{SHRT_MAX}}) {
        VARIANT_BOOL variable = given;
        EXPECT_EQ(Hex(S_OK), Hex(mSlots->LetEnabled(&variable)));
        EXPECT_EQ(given, variable);
        EXPECT_EQ(given, Enabled());
    }
}

TEST_F(TimerVtable, IntervalThatIsNotPositiveSwitchesOff) {
    for (const LONG interval : {0L, -1L, LONG_MIN}) {
        EXPECT_EQ(Hex(S_OK), Hex(mSlots->LetInterval(50)));
        EXPECT_EQ(Hex(S_OK), Hex(Enable(VARIANT_TRUE)));
        EXPECT_EQ(Hex(S_OK), Hex(mSlots->LetInterval(interval)));
        EXPECT_EQ(VARIANT_FALSE, Enabled()) << interval;
    }
}

TEST_F(TimerVtable, CallbackObjectsAreHandedOutWithAReferenceForTheCaller) {
    EarlyTick tick;
    tick.interfaceId = IdOfType(L"_IKWOTimer");
    EarlyAlarm alarm;
    alarm.interfaceId = IdOfType(L"_IKWOAlarm");
    IDispatch* given = &alarm;
    EXPECT_EQ(Hex(S_OK), Hex(mSlots->GetTimerEvents(&given)));
    EXPECT_EQ(nullptr, given);
    given = &tick;
    EXPECT_EQ(Hex(S_OK), Hex(mSlots->GetAlarmEvents(&given)));
    EXPECT_EQ(nullptr, given);

    for (int round = 0; round < 2; ++round) {
        ASSERT_EQ(Hex(S_OK), Hex(mSlots->SetTimerEvents(&tick)));
        ASSERT_EQ(Hex(S_OK), Hex(mSlots->SetAlarmEvents(&alarm)));
    }
    EXPECT_EQ(1u, tick.references) << "set twice, held once";
    EXPECT_EQ(1u, alarm.references);
    EXPECT_EQ(Hex(S_OK), Hex(mSlots->GetTimerEvents(&given)));
    EXPECT_EQ(&tick, given);
    EXPECT_EQ(1u, given->Release());
    EXPECT_EQ(Hex(S_OK), Hex(mSlots->GetAlarmEvents(&given)));
    EXPECT_EQ(&alarm, given);
    EXPECT_EQ(1u, given->Release());

    mSlots.Reset();
    EXPECT_EQ(0u, mTimer.Reset());
    EXPECT_EQ(0u, tick.references) << "the end of the timer lets them go";
    EXPECT_EQ(0u, alarm.references);
}

TEST_F(TimerVtable, ObjectThatCannotBeCalledBackIsRefusedWithAnErrorObject) {
    Sink& deaf = NewSink();
    EXPECT_EQ(Hex(kTypeMismatch), Hex(mSlots->SetTimerEvents(&deaf)));
    ErrorObject error = TakeErrorObject();
    EXPECT_EQ("KWOTimer.TimerEvents (Set)", Narrow(error.source));
    EXPECT_EQ("Type mismatch", Narrow(error.description));
    EXPECT_EQ(Hex(kTypeMismatch), Hex(mSlots->SetAlarmEvents(&deaf)));
    error = TakeErrorObject();
    EXPECT_EQ("KWOTimer.AlarmEvents (Set)", Narrow(error.source));
    EXPECT_EQ(0u, deaf.references);
}

TEST_F(TimerVtable, TimerTickWithoutPlacesForItsArgumentsDoesNothingOrRuns) {
    Sink& sink = NewSink();
    Connect(sink);
    LONG type = 3;
    EXPECT_EQ(Hex(S_OK), Hex(mSlots->TimerTick(nullptr, nullptr, nullptr)));
    EXPECT_EQ(Hex(S_OK), Hex(mSlots->TimerTick(&type, nullptr, nullptr)));
    EXPECT_EQ(0, sink.calls);

    sink.onInvoke = [](DISPID, DISPPARAMS& arguments, EXCEPINFO&) {
        EXPECT_EQ(0, *arguments.rgvarg[1].plVal);
        EXPECT_EQ(0, *arguments.rgvarg[0].pdate);
        return S_OK;
    };
    type = 2;
    EXPECT_EQ(Hex(S_OK), Hex(mSlots->TimerTick(&type, nullptr, nullptr)));
    EXPECT_EQ(1, sink.calls);
}

TEST_F(TimerVtable, TimerTickPassesItsVariablesThroughTheEvent) {
    Sink& sink = NewSink();
    sink.onInvoke = [](DISPID, DISPPARAMS& arguments, EXCEPINFO&) {
        *arguments.rgvarg[1].plVal += 1;
        *arguments.rgvarg[0].pdate += 0.5;
        return S_OK;
    };
    Connect(sink);
    LONG type = 2;
    LONG tag = 41;
    DATE date = 2.0;

    EXPECT_EQ(Hex(S_OK), Hex(mSlots->TimerTick(&type, &tag, &date)));
    EXPECT_EQ(2, type);
    EXPECT_EQ(42, tag);
    EXPECT_EQ(2.5, date);
}

TEST_F(TimerVtable, FailingHandlerHasWrittenWhatItWrote) {
    Sink& sink = NewSink();
    sink.onInvoke = [](DISPID, DISPPARAMS& arguments, EXCEPINFO&) {
        *arguments.rgvarg[1].plVal = 42;
        *arguments.rgvarg[0].pdate = 2.5;
        return E_FAIL;
    };
    Connect(sink);
    LONG type = 2;
    LONG tag = 41;
    DATE date = 2.0;

    EXPECT_TRUE(FAILED(mSlots->TimerTick(&type, &tag, &date)));
    EXPECT_EQ(42, tag);
    EXPECT_EQ(2.5, date);
}

TEST_F(TimerVtable, FailingHandlerIsRaisedWithTheMembersNameUnlessItGaveOne) {
    Sink& failing = NewSink();
    failing.onInvoke = [](DISPID, DISPPARAMS&, EXCEPINFO&) { return E_ACCESSDENIED; };
    const DWORD cookie = Connect(failing);
    LONG type = 1;
    EXPECT_EQ(Hex(E_ACCESSDENIED), Hex(mSlots->TimerTick(&type, nullptr, nullptr)));
    ErrorObject error = TakeErrorObject();
    EXPECT_EQ("KWOTimer.TimerTick", Narrow(error.source));
    Disconnect(cookie);

    Sink& raising = NewSink();
    raising.onInvoke = [](DISPID, DISPPARAMS&, EXCEPINFO& exception) {
        return Raising(exception, static_cast<SCODE>(0x800A0005));
    };
    Connect(raising);
    EXPECT_EQ(Hex(static_cast<HRESULT>(0x800A0005)), Hex(mSlots->TimerTick(&type, nullptr, nullptr)));
    error = TakeErrorObject();
    EXPECT_EQ("the handler", Narrow(error.source));
    EXPECT_EQ("it went wrong", Narrow(error.description));
}

TEST_F(TimerVtable, TimerMayLoseItsLastReferenceInsideTimerTick) {
    Sink& sink = NewSink();
    TimerSlots* const slots = mSlots.Get();
    sink.onInvoke = [&](DISPID, DISPPARAMS&, EXCEPINFO&) {
        mTimer.Reset();
        mSlots.Reset();
        EXPECT_GE(sink.references, 1u) << "not before the call is over";
        return S_OK;
    };
    Connect(sink);
    LONG type = 1;

    EXPECT_EQ(Hex(S_OK), Hex(slots->TimerTick(&type, nullptr, nullptr)));
    EXPECT_EQ(0u, sink.references);
}

TEST_F(TimerVtable, CancelTimersTreatsNullAsMissing) {
    EarlyTick tick;
    tick.interfaceId = IdOfType(L"_IKWOTimer");
    ASSERT_EQ(Hex(S_OK), Hex(mSlots->SetTimerEvents(&tick)));
    LONG type = 2;
    LONG tag = 0;
    EXPECT_EQ(Hex(S_OK), Hex(mSlots->CancelTimers(&type, nullptr)));
    EXPECT_EQ(1u, tick.references);
    EXPECT_EQ(Hex(S_OK), Hex(mSlots->CancelTimers(nullptr, &tag)));
    EXPECT_EQ(0u, tick.references);
}

class TimerVtableIntended : public TimerVtable {};

TEST_F(TimerVtableIntended, DateThatIsNoneIsATypeMismatchOfAddAlarm) {
    for (const double days : {std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity(), 1e300,
                              2'958'466.0, -657'435.0}) {
        // A reader would expect "Error creating timer alarm." and a number of the component's.
        EXPECT_EQ(Hex(kTypeMismatch), Hex(mSlots->AddAlarm(days, 1))) << days;
        const ErrorObject error = TakeErrorObject();
        EXPECT_EQ("KWOTimer.AddAlarm", Narrow(error.source)) << days;
        EXPECT_EQ("Type mismatch", Narrow(error.description)) << days;
    }
    EXPECT_EQ(Hex(S_OK), Hex(mSlots->AddAlarm(2'958'465.0, 1))) << "the last date";
    EXPECT_EQ(Hex(S_OK), Hex(mSlots->AddAlarm(-657'434.0, 2))) << "the first date";
    EXPECT_FALSE(TakeErrorObject().present);
}

TEST_F(TimerVtableIntended, EnabledStaysTrueWhereCancellingHasEndedTheTick) {
    Sink& sink = NewSink();
    Connect(sink);
    EXPECT_EQ(Hex(S_OK), Hex(mSlots->LetInterval(10)));
    EXPECT_EQ(Hex(S_OK), Hex(Enable(VARIANT_TRUE)));
    EXPECT_TRUE(ProcessUntil([&] { return sink.calls >= 1; }));
    LONG type = 1;
    EXPECT_EQ(Hex(S_OK), Hex(mSlots->CancelTimers(&type, nullptr)));
    // A reader would expect False.
    EXPECT_EQ(VARIANT_TRUE, Enabled());
    EXPECT_EQ(Hex(S_OK), Hex(Enable(VARIANT_TRUE)));
    const int calls = sink.calls;
    WaitForAnother(200);
    EXPECT_EQ(calls, sink.calls) << "the same value again starts nothing";

    EXPECT_EQ(Hex(S_OK), Hex(mSlots->LetInterval(10)));
    EXPECT_TRUE(ProcessUntil([&] { return sink.calls > calls; })) << "the interval does";
    EXPECT_EQ(Hex(S_OK), Hex(mSlots->CancelTimers(&type, nullptr)));
    const int callsBefore = sink.calls;
    EXPECT_EQ(Hex(S_OK), Hex(Enable(VARIANT_FALSE)));
    EXPECT_EQ(Hex(S_OK), Hex(Enable(VARIANT_TRUE)));
    EXPECT_TRUE(ProcessUntil([&] { return sink.calls > callsBefore; })) << "and so do off and on";
}

}  // namespace
}  // namespace kwo::com_test
