#include "timer_client.h"

namespace kwo::com_test {
namespace {

/// What sinks may do with the arguments of events, and with the timer, while they are called.
class TimerSinks : public TimerClient {};

TEST_F(TimerSinks, LaterSinksSeeWhatEarlierOnesWroteAndTheLastDateHolds) {
    Sink& first = NewSink();
    Sink& second = NewSink();
    first.onInvoke = [](DISPID, DISPPARAMS& arguments, EXCEPINFO&) {
        *arguments.rgvarg[1].plVal = 11;
        *arguments.rgvarg[0].pdate = 2.5;
        return S_OK;
    };
    second.onInvoke = [](DISPID, DISPPARAMS& arguments, EXCEPINFO&) {
        EXPECT_EQ(*arguments.rgvarg[1].plVal, 11);
        EXPECT_EQ(*arguments.rgvarg[0].pdate, 2.5);
        *arguments.rgvarg[0].pdate = 3.5;
        return S_OK;
    };
    Connect(first);
    Connect(second);
    LONG tag = 10;
    double date = 0;
    EXPECT_EQ(Hex(Call(mTimer.Get(), L"TimerTick", {2, Var::Ref(&tag), Var::Reference(VT_DATE, &date)}).status),
              Hex(S_OK));

    EXPECT_EQ(tag, 11);
    EXPECT_EQ(date, 3.5);
}

TEST_F(TimerSinks, DateOfOneSinkRearmsTheAlarmForAll) {
    Sink& first = NewSink();
    Sink& second = NewSink();
    second.onInvoke = [&](DISPID, DISPPARAMS& arguments, EXCEPINFO&) {
        EXPECT_EQ(*arguments.rgvarg[1].plVal, 6) << "the same tag each time";
        EXPECT_EQ(*arguments.rgvarg[0].pdate, 0) << "a date is asked for anew each time";
        if (second.calls == 1) *arguments.rgvarg[0].pdate = 1.5;
        return S_OK;
    };
    Connect(first);
    Connect(second);
    AddRelative(10, 6);

    EXPECT_TRUE(ProcessUntil([&] { return second.calls >= 2; }));
    EXPECT_EQ(first.calls, 2);
    mTimer.Reset();
    EXPECT_EQ(second.references, 0u) << "nothing is pending any more";
}

TEST_F(TimerSinks, DateOfAnAlarmWhoseOtherSinkFailsIsLost) {
    Sink& asking = NewSink();
    Sink& failing = NewSink();
    asking.onInvoke = [](DISPID, DISPPARAMS& arguments, EXCEPINFO&) {
        *arguments.rgvarg[0].pdate = 1.5;
        return S_OK;
    };
    failing.onInvoke = [](DISPID, DISPPARAMS&, EXCEPINFO&) { return E_FAIL; };
    Connect(asking);
    Connect(failing);
    AddRelative(10, 6);
    EXPECT_TRUE(ProcessUntil([&] { return failing.calls == 1; }));

    WaitForAnother(1'300);
    EXPECT_EQ(asking.calls, 1);
    EXPECT_EQ(failing.calls, 1);
}

TEST_F(TimerSinks, SinkWithoutMemoryKeepsNoOtherFromItsEventAndTheCallerHearsOfIt) {
    Sink& first = NewSink();
    Sink& second = NewSink();
    Sink& third = NewSink();
    second.onInvoke = [](DISPID, DISPPARAMS&, EXCEPINFO&) { return E_OUTOFMEMORY; };
    third.onInvoke = [](DISPID, DISPPARAMS&, EXCEPINFO&) { return E_FAIL; };
    Connect(first);
    Connect(second);
    Connect(third);
    const Outcome outcome = Force(1);

    EXPECT_EQ(Hex(outcome.scode), Hex(E_OUTOFMEMORY)) << "the first failure";
    EXPECT_EQ(outcome.description, L"Out of memory");
    EXPECT_EQ(first.calls, 1);
    EXPECT_EQ(third.calls, 1);
}

TEST_F(TimerSinks, FailingAlarmWithoutATagTakesAllAlarmsAlong) {
    Sink& failing = NewSink();
    failing.onInvoke = [](DISPID, DISPPARAMS&, EXCEPINFO&) { return E_FAIL; };
    Connect(failing);
    AddRelative(10, 0);
    AddRelative(60, 5);
    EXPECT_TRUE(ProcessUntil([&] { return failing.calls == 1; }));

    WaitForAnother(150);
    EXPECT_EQ(failing.calls, 1);
}

TEST_F(TimerSinks, FailingAlarmWithATagLeavesTheOthersAndTheTick) {
    Sink& failing = NewSink();
    int ticks = 0;
    std::vector<LONG> tags;
    failing.onInvoke = [&](DISPID id, DISPPARAMS& arguments, EXCEPINFO&) {
        if (id == kTickEvent) {
            ++ticks;
            return S_OK;
        }
        tags.push_back(*arguments.rgvarg[1].plVal);
        return tags.size() == 1 ? E_FAIL : S_OK;
    };
    Connect(failing);
    AddRelative(10, 4);
    AddRelative(40, 5);
    EXPECT_TRUE(ProcessUntil([&] { return tags.size() == 1; }));
    Start(10);

    EXPECT_TRUE(ProcessUntil([&] { return tags.size() == 2 && ticks > 1; }));
    EXPECT_EQ(tags, (std::vector<LONG>{4, 5}));
}

TEST_F(TimerSinks, TagThatAFailingSinkWroteIsTheOneThatIsCancelled) {
    Sink& sink = NewSink();
    std::vector<LONG> tags;
    sink.onInvoke = [&](DISPID, DISPPARAMS& arguments, EXCEPINFO&) {
        LONG& tag = *arguments.rgvarg[1].plVal;
        tags.push_back(tag);
        if (tag != 3) return S_OK;
        tag = 4;
        return E_FAIL;
    };
    Connect(sink);
    AddRelative(10, 3);
    AddRelative(200, 4);
    AddRelative(300, 5);

    EXPECT_TRUE(ProcessUntil([&] { return !tags.empty() && tags.back() == 5; }));
    EXPECT_EQ(tags, (std::vector<LONG>{3, 5}));
}

TEST_F(TimerSinks, SinkThatDisconnectsItselfIsHeldUntilItsCallIsOver) {
    Sink& sink = NewSink();
    DWORD own = 0;
    sink.onInvoke = [&](DISPID, DISPPARAMS&, EXCEPINFO&) {
        EXPECT_EQ(Hex(Disconnect(own)), Hex(S_OK));
        EXPECT_GE(sink.references, 1u);
        return S_OK;
    };
    own = Connect(sink);
    Force(kTickEvent);

    EXPECT_EQ(sink.references, 0u);
}

TEST_F(TimerSinks, SinkThatIsGoneKeepsNoOtherFromItsEvent) {
    Sink& gone = NewSink();
    Sink& next = NewSink();
    gone.onInvoke = [](DISPID, DISPPARAMS&, EXCEPINFO&) { return RPC_E_DISCONNECTED; };
    Connect(gone);
    Connect(next);
    Start(10);

    EXPECT_TRUE(ProcessUntil([&] { return next.calls >= 3; })) << "the row is not lost either";
    EXPECT_EQ(gone.calls, 1);
}

TEST_F(TimerSinks, SinkWithoutTheEventStaysConnectedAndTheRowStaysToo) {
    Sink& deaf = NewSink();
    deaf.onInvoke = [](DISPID, DISPPARAMS&, EXCEPINFO&) { return DISP_E_MEMBERNOTFOUND; };
    Connect(deaf);
    Start(10);

    EXPECT_TRUE(ProcessUntil([&] { return deaf.calls >= 3; }));
}

TEST_F(TimerSinks, TimerThatASinkKeepsOutlivesItsRowAndItsOwner) {
    Sink& sink = NewSink();
    ComPtr<IDispatch> kept;
    sink.onInvoke = [&](DISPID, DISPPARAMS& arguments, EXCEPINFO&) {
        arguments.rgvarg[2].pdispVal->AddRef();
        kept = ComPtr<IDispatch>::Adopt(arguments.rgvarg[2].pdispVal);
        return S_OK;
    };
    Connect(sink);
    AddRelative(10, 1);
    mTimer.Reset();
    EXPECT_TRUE(ProcessUntil([&] { return sink.calls == 1; }));
    EXPECT_EQ(sink.references, 1u);

    EXPECT_EQ(Get(kept.Get(), L"Interval").result.lVal, 0);
    EXPECT_EQ(kept.Reset(), 0u);
    EXPECT_EQ(sink.references, 0u);
}

TEST_F(TimerSinks, TickOfATimerThatNobodyHoldsGoesOnUntilItIsCancelled) {
    Sink& sink = NewSink();
    sink.onInvoke = [&](DISPID, DISPPARAMS& arguments, EXCEPINFO&) {
        if (sink.calls == 3) {
            EXPECT_EQ(Hex(Call(arguments.rgvarg[0].pdispVal, L"CancelTimers", {1}).status), Hex(S_OK));
        }
        return S_OK;
    };
    Connect(sink);
    Start(10);
    mTimer.Reset();

    EXPECT_TRUE(ProcessUntil([&] { return sink.references == 0; })) << "it ends with its last row";
    EXPECT_EQ(sink.calls, 3);
}

TEST_F(TimerSinks, NoReferenceToTheTimerIsLeftBehind) {
    Sink& sink = NewSink();
    Connect(sink);
    Start(10);
    AddRelative(10, 1);
    AddRelative(10, 2);
    EXPECT_TRUE(ProcessUntil([&] { return sink.calls >= 4; }));
    AddRelative(50'000, 3);
    EXPECT_EQ(Hex(Call(mTimer.Get(), L"CancelTimers").status), Hex(S_OK));

    EXPECT_EQ(mTimer.Reset(), 0u);
}

TEST_F(TimerSinks, HandlerMayCreateAndArmTimersOfItsOwn) {
    Sink& sink = NewSink();
    Sink& made = NewSink();
    ComPtr<IDispatch> another;
    sink.onInvoke = [&](DISPID, DISPPARAMS&, EXCEPINFO&) {
        another = Create(L"KWOTimer");
        Connect(made, PointOf(another.Get()).Get());
        for (const int tag : {1, 2, 3, 4, 5})
            EXPECT_EQ(Hex(Call(another.Get(), L"AddRelativeAlarm", {10, tag}).status), Hex(S_OK));
        return S_OK;
    };
    Connect(sink);
    AddRelative(10, 1);

    EXPECT_TRUE(ProcessUntil([&] { return made.calls == 5; }));
}

TEST_F(TimerSinks, NamedArgumentsFindTheirPlaces) {
    Sink& sink = NewSink();
    Connect(sink);
    LONG tag = 8;
    double date = 0;
    sink.onInvoke = [](DISPID id, DISPPARAMS& arguments, EXCEPINFO&) {
        if (id == kAlarmEvent) {
            *arguments.rgvarg[1].plVal += 1;
            *arguments.rgvarg[0].pdate = 4.25;
        }
        return S_OK;
    };
    EXPECT_EQ(
        Hex(CallNamed(
                mTimer.Get(), L"TimerTick", {},
                {{L"NewDateTime", Var::Reference(VT_DATE, &date)}, {L"ItemData", Var::Ref(&tag)}, {L"TickType", 2}})
                .status),
        Hex(S_OK));
    EXPECT_EQ(tag, 9);
    EXPECT_EQ(date, 4.25);

    sink.onInvoke = nullptr;
    sink.calls = 0;
    EXPECT_EQ(Hex(CallNamed(mTimer.Get(), L"AddRelativeAlarm", {}, {{L"ItemData", 7}, {L"Interval", 40}}).status),
              Hex(S_OK));
    AddRelative(60, 8);
    EXPECT_EQ(Hex(CallNamed(mTimer.Get(), L"CancelTimers", {}, {{L"ItemData", 7}, {L"TimerType", 2}}).status),
              Hex(S_OK));
    EXPECT_EQ(Hex(CallNamed(mTimer.Get(), L"AddAlarm", {}, {{L"ItemData", 9}, {L"DateTime", Var::Date(1.5)}}).status),
              Hex(S_OK));
    std::vector<LONG> tags;
    sink.onInvoke = [&](DISPID, DISPPARAMS& arguments, EXCEPINFO&) {
        tags.push_back(*arguments.rgvarg[1].plVal);
        return S_OK;
    };
    EXPECT_TRUE(ProcessUntil([&] { return tags.size() >= 2; }));
    EXPECT_EQ(tags, (std::vector<LONG>{8, 9}));
}

TEST_F(TimerSinks, ErrorOfAddAlarmNamesTheMember) {
    const Outcome outcome = Call(mTimer.Get(), L"AddAlarm", {Var::Date(1e300), 1});

    EXPECT_EQ(Narrow(outcome.source), "KWOTimer.AddAlarm");
    EXPECT_EQ(outcome.code, 0);
    EXPECT_EQ(Hex(outcome.scode), Hex(static_cast<HRESULT>(0x800A000D)));
}

}  // namespace
}  // namespace kwo::com_test
