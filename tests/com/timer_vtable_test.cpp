#include <climits>
#include <limits>

#include "timer_client.h"
#include "timer_slots.h"

namespace kwo::com_test {
namespace {

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
        EXPECT_EQ(Hex(mSlots->GetItem(&item)), Hex(S_OK));
        return item;
    }
    HRESULT Enable(VARIANT_BOOL value) {
        const HRESULT status = mSlots->LetEnabled(&value);
        return status;
    }
    VARIANT_BOOL Enabled() {
        VARIANT_BOOL value = 55;
        EXPECT_EQ(Hex(mSlots->GetEnabled(&value)), Hex(S_OK));
        return value;
    }

    ComPtr<TimerSlots> mSlots;
};

TEST_F(TimerVtable, ItemIsEmptyAtFirstAndKeepsWhatItIsGiven) {
    EXPECT_EQ(Item().vt, VT_EMPTY);
    ASSERT_EQ(Hex(mSlots->LetItem(Var(L"text"))), Hex(S_OK));
    EXPECT_EQ(Item().Text(), L"text");
    ASSERT_EQ(Hex(mSlots->SetItem(Var(5'000'000'000LL))), Hex(S_OK));
    EXPECT_EQ(Item().vt, VT_I8);
    EXPECT_EQ(Item().llVal, 5'000'000'000LL);
}

TEST_F(TimerVtable, ItemTakesACopyThroughReferences) {
    Var variable(L"first");
    ASSERT_EQ(Hex(mSlots->LetItem(Var::Ref(&variable))), Hex(S_OK));
    variable = Var(L"second");
    EXPECT_EQ(Item().Text(), L"first");

    IDispatch* object = &NewSink();
    ASSERT_EQ(Hex(mSlots->SetItem(Var::Reference(VT_DISPATCH, &object))), Hex(S_OK));
    EXPECT_EQ(Item().vt, VT_DISPATCH);
    EXPECT_EQ(Item().pdispVal, object);
    EXPECT_EQ(mSinks.front().references, 1u);
    ASSERT_EQ(Hex(mSlots->LetItem(Var())), Hex(S_OK));
    EXPECT_EQ(mSinks.front().references, 0u);
}

TEST_F(TimerVtable, ItemCountsTheObjectsOfAnArray) {
    Sink& object = NewSink();
    Var array;
    array.vt = VT_ARRAY | VT_DISPATCH;
    array.parray = SafeArrayCreateVector(VT_DISPATCH, -3, 2);
    LONG index = -2;
    ASSERT_EQ(Hex(SafeArrayPutElement(array.parray, &index, static_cast<IDispatch*>(&object))), Hex(S_OK));
    ASSERT_EQ(Hex(mSlots->LetItem(array)), Hex(S_OK));
    EXPECT_EQ(object.references, 2u);
    {
        const Var item = Item();
        ASSERT_EQ(item.vt, VT_ARRAY | VT_DISPATCH);
        EXPECT_EQ(item.parray->rgsabound[0].lLbound, -3);
        EXPECT_EQ(object.references, 3u);
    }
    array = Var();
    EXPECT_EQ(object.references, 1u);
    ASSERT_EQ(Hex(mSlots->LetItem(Var())), Hex(S_OK));
    EXPECT_EQ(object.references, 0u);
}

TEST_F(TimerVtable, ItemThatCannotBeCopiedLeavesTheOneBefore) {
    ASSERT_EQ(Hex(mSlots->LetItem(Var(7))), Hex(S_OK));
    VARIANT broken = {};
    broken.vt = 0x0FFE;

    EXPECT_TRUE(FAILED(mSlots->LetItem(broken)));
    EXPECT_EQ(Narrow(TakeErrorObject().source), "KWOTimer.Item (Let)");
    EXPECT_TRUE(FAILED(mSlots->SetItem(broken)));
    EXPECT_EQ(Narrow(TakeErrorObject().source), "KWOTimer.Item (Set)");
    EXPECT_EQ(Item().lVal, 7);
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
    ASSERT_EQ(Hex(mSlots->SetItem(Var(static_cast<IDispatch*>(&first)))), Hex(S_OK));
    first.onEnd = [&] { seen = Item().lVal; };

    ASSERT_EQ(Hex(mSlots->LetItem(Var(8))), Hex(S_OK));
    EXPECT_EQ(seen, 8);
    EXPECT_EQ(first.references, 0u);
    first.onEnd = nullptr;
}

TEST_F(TimerVtable, ItemThatEndsMayReleaseTheTimer) {
    CuriousItem first;
    ASSERT_EQ(Hex(mSlots->SetItem(Var(static_cast<IDispatch*>(&first)))), Hex(S_OK));
    TimerSlots* const slots = mSlots.Get();
    first.onEnd = [&] {
        mTimer.Reset();
        mSlots.Reset();
    };

    EXPECT_EQ(Hex(slots->LetItem(Var(8))), Hex(S_OK));
    EXPECT_FALSE(mTimer);
}

TEST_F(TimerVtable, NumbersOfBothEndsAreKept) {
    LONG value = 99;
    EXPECT_EQ(Hex(mSlots->GetInterval(&value)), Hex(S_OK));
    EXPECT_EQ(value, 0);
    value = 99;
    EXPECT_EQ(Hex(mSlots->GetItemData(&value)), Hex(S_OK));
    EXPECT_EQ(value, 0);
    for (const LONG number : {LONG_MIN, -1L, 0L, 1L, LONG_MAX}) {
        EXPECT_EQ(Hex(mSlots->LetInterval(number)), Hex(S_OK));
        EXPECT_EQ(Hex(mSlots->LetItemData(number / 2)), Hex(S_OK));
        EXPECT_EQ(Hex(mSlots->GetInterval(&value)), Hex(S_OK));
        EXPECT_EQ(value, number);
        EXPECT_EQ(Hex(mSlots->GetItemData(&value)), Hex(S_OK));
        EXPECT_EQ(value, number / 2);
    }
}

TEST_F(TimerVtable, LongestIntervalIsTakenWhileEnabled) {
    EXPECT_EQ(Hex(Enable(VARIANT_TRUE)), Hex(S_OK));
    EXPECT_EQ(Hex(mSlots->LetInterval(LONG_MAX)), Hex(S_OK));
    EXPECT_EQ(Enabled(), VARIANT_TRUE);
}

TEST_F(TimerVtable, EnabledKeepsAllSixteenBitsAndLeavesTheCallersVariable) {
    EXPECT_EQ(Enabled(), 0);
    for (const VARIANT_BOOL given : {VARIANT_BOOL{1}, VARIANT_TRUE, VARIANT_BOOL{SHRT_MIN}, VARIANT_BOOL{SHRT_MAX}}) {
        VARIANT_BOOL variable = given;
        EXPECT_EQ(Hex(mSlots->LetEnabled(&variable)), Hex(S_OK));
        EXPECT_EQ(variable, given);
        EXPECT_EQ(Enabled(), given);
    }
}

TEST_F(TimerVtable, IntervalThatIsNotPositiveSwitchesOff) {
    for (const LONG interval : {0L, -1L, LONG_MIN}) {
        EXPECT_EQ(Hex(mSlots->LetInterval(50)), Hex(S_OK));
        EXPECT_EQ(Hex(Enable(VARIANT_TRUE)), Hex(S_OK));
        EXPECT_EQ(Hex(mSlots->LetInterval(interval)), Hex(S_OK));
        EXPECT_EQ(Enabled(), VARIANT_FALSE) << interval;
    }
}

TEST_F(TimerVtable, CallbackObjectsAreHandedOutWithAReferenceForTheCaller) {
    EarlyTick tick;
    tick.interfaceId = IdOfType(L"_IKWOTimer");
    EarlyAlarm alarm;
    alarm.interfaceId = IdOfType(L"_IKWOAlarm");
    IDispatch* given = &alarm;
    EXPECT_EQ(Hex(mSlots->GetTimerEvents(&given)), Hex(S_OK));
    EXPECT_EQ(given, nullptr);
    given = &tick;
    EXPECT_EQ(Hex(mSlots->GetAlarmEvents(&given)), Hex(S_OK));
    EXPECT_EQ(given, nullptr);

    for (int round = 0; round < 2; ++round) {
        ASSERT_EQ(Hex(mSlots->SetTimerEvents(&tick)), Hex(S_OK));
        ASSERT_EQ(Hex(mSlots->SetAlarmEvents(&alarm)), Hex(S_OK));
    }
    EXPECT_EQ(tick.references, 1u) << "set twice, held once";
    EXPECT_EQ(alarm.references, 1u);
    EXPECT_EQ(Hex(mSlots->GetTimerEvents(&given)), Hex(S_OK));
    EXPECT_EQ(given, &tick);
    EXPECT_EQ(given->Release(), 1u);
    EXPECT_EQ(Hex(mSlots->GetAlarmEvents(&given)), Hex(S_OK));
    EXPECT_EQ(given, &alarm);
    EXPECT_EQ(given->Release(), 1u);

    mSlots.Reset();
    EXPECT_EQ(mTimer.Reset(), 0u);
    EXPECT_EQ(tick.references, 0u) << "the end of the timer lets them go";
    EXPECT_EQ(alarm.references, 0u);
}

TEST_F(TimerVtable, ObjectThatCannotBeCalledBackIsRefusedWithAnErrorObject) {
    Sink& deaf = NewSink();
    EXPECT_EQ(Hex(mSlots->SetTimerEvents(&deaf)), Hex(kTypeMismatch));
    ErrorObject error = TakeErrorObject();
    EXPECT_EQ(Narrow(error.source), "KWOTimer.TimerEvents (Set)");
    EXPECT_EQ(Narrow(error.description), "Type mismatch");
    EXPECT_EQ(Hex(mSlots->SetAlarmEvents(&deaf)), Hex(kTypeMismatch));
    error = TakeErrorObject();
    EXPECT_EQ(Narrow(error.source), "KWOTimer.AlarmEvents (Set)");
    EXPECT_EQ(deaf.references, 0u);
}

TEST_F(TimerVtable, TimerTickWithoutPlacesForItsArgumentsDoesNothingOrRuns) {
    Sink& sink = NewSink();
    Connect(sink);
    LONG type = 3;
    EXPECT_EQ(Hex(mSlots->TimerTick(nullptr, nullptr, nullptr)), Hex(S_OK));
    EXPECT_EQ(Hex(mSlots->TimerTick(&type, nullptr, nullptr)), Hex(S_OK));
    EXPECT_EQ(sink.calls, 0);

    sink.onInvoke = [](DISPID, DISPPARAMS& arguments, EXCEPINFO&) {
        EXPECT_EQ(*arguments.rgvarg[1].plVal, 0);
        EXPECT_EQ(*arguments.rgvarg[0].pdate, 0);
        return S_OK;
    };
    type = 2;
    EXPECT_EQ(Hex(mSlots->TimerTick(&type, nullptr, nullptr)), Hex(S_OK));
    EXPECT_EQ(sink.calls, 1);
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

    EXPECT_EQ(Hex(mSlots->TimerTick(&type, &tag, &date)), Hex(S_OK));
    EXPECT_EQ(type, 2);
    EXPECT_EQ(tag, 42);
    EXPECT_EQ(date, 2.5);
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
    EXPECT_EQ(tag, 42);
    EXPECT_EQ(date, 2.5);
}

TEST_F(TimerVtable, FailingHandlerIsRaisedWithTheMembersNameUnlessItGaveOne) {
    Sink& failing = NewSink();
    failing.onInvoke = [](DISPID, DISPPARAMS&, EXCEPINFO&) { return E_ACCESSDENIED; };
    const DWORD cookie = Connect(failing);
    LONG type = 1;
    EXPECT_EQ(Hex(mSlots->TimerTick(&type, nullptr, nullptr)), Hex(E_ACCESSDENIED));
    ErrorObject error = TakeErrorObject();
    EXPECT_EQ(Narrow(error.source), "KWOTimer.TimerTick");
    Disconnect(cookie);

    Sink& raising = NewSink();
    raising.onInvoke = [](DISPID, DISPPARAMS&, EXCEPINFO& exception) {
        return Raising(exception, static_cast<SCODE>(0x800A0005));
    };
    Connect(raising);
    EXPECT_EQ(Hex(mSlots->TimerTick(&type, nullptr, nullptr)), Hex(static_cast<HRESULT>(0x800A0005)));
    error = TakeErrorObject();
    EXPECT_EQ(Narrow(error.source), "the handler");
    EXPECT_EQ(Narrow(error.description), "it went wrong");
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

    EXPECT_EQ(Hex(slots->TimerTick(&type, nullptr, nullptr)), Hex(S_OK));
    EXPECT_EQ(sink.references, 0u);
}

TEST_F(TimerVtable, CancelTimersTreatsNullAsMissing) {
    EarlyTick tick;
    tick.interfaceId = IdOfType(L"_IKWOTimer");
    ASSERT_EQ(Hex(mSlots->SetTimerEvents(&tick)), Hex(S_OK));
    LONG type = 2;
    LONG tag = 0;
    EXPECT_EQ(Hex(mSlots->CancelTimers(&type, nullptr)), Hex(S_OK));
    EXPECT_EQ(tick.references, 1u);
    EXPECT_EQ(Hex(mSlots->CancelTimers(nullptr, &tag)), Hex(S_OK));
    EXPECT_EQ(tick.references, 0u);
}

class TimerVtableIntended : public TimerVtable {};

TEST_F(TimerVtableIntended, DateThatIsNoneIsATypeMismatchOfAddAlarm) {
    for (const double days : {std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity(), 1e300,
                              2'958'466.0, -657'435.0}) {
        // A reader would expect "Error creating timer alarm." and a number of the component's.
        EXPECT_EQ(Hex(mSlots->AddAlarm(days, 1)), Hex(kTypeMismatch)) << days;
        const ErrorObject error = TakeErrorObject();
        EXPECT_EQ(Narrow(error.source), "KWOTimer.AddAlarm") << days;
        EXPECT_EQ(Narrow(error.description), "Type mismatch") << days;
    }
    EXPECT_EQ(Hex(mSlots->AddAlarm(2'958'465.0, 1)), Hex(S_OK)) << "the last date";
    EXPECT_EQ(Hex(mSlots->AddAlarm(-657'434.0, 2)), Hex(S_OK)) << "the first date";
    EXPECT_FALSE(TakeErrorObject().present);
}

TEST_F(TimerVtableIntended, EnabledStaysTrueWhereCancellingHasEndedTheTick) {
    Sink& sink = NewSink();
    Connect(sink);
    EXPECT_EQ(Hex(mSlots->LetInterval(10)), Hex(S_OK));
    EXPECT_EQ(Hex(Enable(VARIANT_TRUE)), Hex(S_OK));
    EXPECT_TRUE(ProcessUntil([&] { return sink.calls >= 1; }));
    LONG type = 1;
    EXPECT_EQ(Hex(mSlots->CancelTimers(&type, nullptr)), Hex(S_OK));
    // A reader would expect False.
    EXPECT_EQ(Enabled(), VARIANT_TRUE);
    EXPECT_EQ(Hex(Enable(VARIANT_TRUE)), Hex(S_OK));
    const int calls = sink.calls;
    WaitForAnother(200);
    EXPECT_EQ(sink.calls, calls) << "the same value again starts nothing";

    EXPECT_EQ(Hex(mSlots->LetInterval(10)), Hex(S_OK));
    EXPECT_TRUE(ProcessUntil([&] { return sink.calls > calls; })) << "the interval does";
    EXPECT_EQ(Hex(mSlots->CancelTimers(&type, nullptr)), Hex(S_OK));
    const int callsBefore = sink.calls;
    EXPECT_EQ(Hex(Enable(VARIANT_FALSE)), Hex(S_OK));
    EXPECT_EQ(Hex(Enable(VARIANT_TRUE)), Hex(S_OK));
    EXPECT_TRUE(ProcessUntil([&] { return sink.calls > callsBefore; })) << "and so do off and on";
}

}  // namespace
}  // namespace kwo::com_test
