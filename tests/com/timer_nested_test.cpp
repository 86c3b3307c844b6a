#include <algorithm>
#include <deque>

#include "timer_client.h"

namespace kwo::com_test {
namespace {

/// Callback objects that process messages, change the timer or let it go while they are called.
class TimerNested : public TimerClient {
protected:
    void SetUp() override {
        TimerClient::SetUp();
        mTick.interfaceId = IdOfType(L"_IKWOTimer");
        mAlarm.interfaceId = IdOfType(L"_IKWOAlarm");
        ASSERT_EQ(Hex(Set(mTimer.Get(), L"TimerEvents", static_cast<IDispatch*>(&mTick)).status), Hex(S_OK));
        ASSERT_EQ(Hex(Set(mTimer.Get(), L"AlarmEvents", static_cast<IDispatch*>(&mAlarm)).status), Hex(S_OK));
    }
    void TearDown() override {
        TimerClient::TearDown();
        EXPECT_EQ(mTick.references, 0u);
        EXPECT_EQ(mAlarm.references, 0u);
    }

    EarlyTick mTick;
    EarlyAlarm mAlarm;
};

TEST_F(TimerNested, MessageLoopInACallbackBringsNothingUntilTheCallbackIsOver) {
    int depth = 0;
    int deepest = 0;
    mTick.onTick = [&](IDispatch**) {
        deepest = std::max(deepest, ++depth);
        if (mTick.calls == 1) {
            AddRelative(1, 1);
            ProcessFor(200);
            EXPECT_EQ(mAlarm.calls, 0) << "added and due while the callback runs";
        }
        --depth;
        return S_OK;
    };
    mAlarm.onAlarm = [&](IDispatch**, LONG*, DATE*) {
        deepest = std::max(deepest, depth + 1);
        return S_OK;
    };
    Start(15);

    EXPECT_TRUE(ProcessUntil([&] { return mTick.calls >= 4 && mAlarm.calls == 1; })) << "it goes on afterwards";
    EXPECT_EQ(deepest, 1);
}

/// A modal window of the system runs a message loop of its own, which takes every message of the thread.
TEST_F(TimerNested, ModalMessageLoopInACallbackStopsTheTicksOnlyForItsTime) {
    mTick.onTick = [&](IDispatch**) {
        if (mTick.calls != 1) return S_OK;
        const UINT_PTR end = SetTimer(nullptr, 0, 150, nullptr);
        MSG message;
        while (GetMessageW(&message, nullptr, 0, 0) > 0 && (message.message != WM_TIMER || message.wParam != end))
            DispatchMessageW(&message);
        KillTimer(nullptr, end);
        EXPECT_EQ(mTick.calls, 1);
        return S_OK;
    };
    Start(15);

    EXPECT_TRUE(ProcessUntil([&] { return mTick.calls >= 3; }));
}

TEST_F(TimerNested, MissedTicksAreLeftOutNotCaughtUpWith) {
    DWORD slowEnd = 0;
    int early = 0;
    mTick.onTick = [&](IDispatch**) {
        if (mTick.calls == 1) {
            Sleep(500);
            slowEnd = GetTickCount();
        } else if (GetTickCount() - slowEnd < 200) {
            ++early;
        }
        return S_OK;
    };
    Start(50);

    EXPECT_TRUE(ProcessUntil([&] { return mTick.calls >= 2 && GetTickCount() - slowEnd >= 200; }));
    EXPECT_LE(early, 5) << "ten were missed";
}

TEST_F(TimerNested, AlarmCallbackMayCancelEverythingAndLetTheTimerGo) {
    mAlarm.onAlarm = [&](IDispatch** timer, LONG*, DATE* date) {
        EXPECT_EQ(Hex(Call(*timer, L"CancelTimers").status), Hex(S_OK));
        EXPECT_GE(mAlarm.references, 1u) << "not while it runs";
        mTimer.Reset();
        (*timer)->Release();
        *timer = nullptr;
        *date = 0;
        return S_OK;
    };
    AddRelative(10, 3);
    AddRelative(50, 4);

    EXPECT_TRUE(ProcessUntil([&] { return mAlarm.calls == 1; }));
    EXPECT_EQ(mAlarm.references, 0u);
    WaitForAnother(150);
    EXPECT_EQ(mAlarm.calls, 1);
}

TEST_F(TimerNested, TimerCancelledByItsAlarmIsArmedAgainByTheDateOfThatAlarm) {
    Sink& sink = NewSink();
    Connect(sink);
    mAlarm.onAlarm = [&](IDispatch** timer, LONG*, DATE* date) {
        Call(*timer, L"CancelTimers");
        *date = 1.5;
        return S_OK;
    };
    AddRelative(10, 3);

    EXPECT_TRUE(ProcessUntil([&] { return sink.calls == 1; })) << "as an event: the callback object was let go";
    EXPECT_EQ(mAlarm.calls, 1);
}

TEST_F(TimerNested, CallbackMayPutAnotherInItsPlace) {
    EarlyTick heir;
    heir.interfaceId = mTick.interfaceId;
    mTick.onTick = [&](IDispatch** timer) {
        EXPECT_EQ(Hex(Set(*timer, L"TimerEvents", static_cast<IDispatch*>(&heir)).status), Hex(S_OK));
        EXPECT_GE(mTick.references, 1u) << "not while it runs";
        return S_OK;
    };
    Start(10);

    EXPECT_TRUE(ProcessUntil([&] { return heir.calls >= 2; }));
    EXPECT_EQ(mTick.calls, 1);
    EXPECT_EQ(mTick.references, 0u);
    Call(mTimer.Get(), L"CancelTimers");
    EXPECT_EQ(heir.references, 0u);
}

TEST_F(TimerNested, EventsComeBackWhereTheCallbackObjectIsTakenAway) {
    Sink& sink = NewSink();
    Connect(sink);
    mTick.onTick = [&](IDispatch** timer) {
        Set(*timer, L"TimerEvents", static_cast<IDispatch*>(nullptr));
        return S_OK;
    };
    Start(10);

    EXPECT_TRUE(ProcessUntil([&] { return sink.calls >= 2; }));
    EXPECT_EQ(mTick.calls, 1);
}

TEST_F(TimerNested, CallbackMayChangeTheIntervalAndSwitchOff) {
    mTick.onTick = [&](IDispatch** timer) {
        if (mTick.calls == 1) Let(*timer, L"Interval", 5);
        if (mTick.calls == 3) Let(*timer, L"Interval", -1);
        return S_OK;
    };
    Start(60);

    EXPECT_TRUE(ProcessUntil([&] { return mTick.calls == 3; }));
    WaitForAnother(150);
    EXPECT_EQ(mTick.calls, 3);
    EXPECT_EQ(Get(mTimer.Get(), L"Enabled").result.boolVal, VARIANT_FALSE);
}

TEST_F(TimerNested, DateOfAFailingAlarmIsLost) {
    mAlarm.onAlarm = [&](IDispatch**, LONG*, DATE* date) {
        *date = 1.5;
        return E_FAIL;
    };
    AddRelative(10, 3);
    EXPECT_TRUE(ProcessUntil([&] { return mAlarm.calls == 1; }));

    WaitForAnother(1'300);
    EXPECT_EQ(mAlarm.calls, 1);
}

TEST_F(TimerNested, TagThatTheCallbackWritesIsTheTagOfTheNextAlarm) {
    std::vector<LONG> tags;
    mAlarm.onAlarm = [&](IDispatch**, LONG* tag, DATE* date) {
        tags.push_back(*tag);
        *tag += 1;
        if (tags.size() == 1) *date = 1.5;
        return S_OK;
    };
    AddRelative(10, 3);

    EXPECT_TRUE(ProcessUntil([&] { return tags.size() == 2; }));
    EXPECT_EQ(tags, (std::vector<LONG>{3, 4}));
}

TEST_F(TimerNested, TagThatAFailingCallbackWroteIsTheOneThatIsCancelled) {
    std::vector<LONG> tags;
    mAlarm.onAlarm = [&](IDispatch**, LONG* tag, DATE*) {
        tags.push_back(*tag);
        if (*tag != 3) return S_OK;
        *tag = 4;
        return E_FAIL;
    };
    AddRelative(10, 3);
    AddRelative(200, 4);
    AddRelative(300, 5);

    EXPECT_TRUE(ProcessUntil([&] { return !tags.empty() && tags.back() == 5; }));
    EXPECT_EQ(tags, (std::vector<LONG>{3, 5}));
}

TEST_F(TimerNested, CallbacksOfManyTimersAreEachGivenTheirOwn) {
    struct Pair {
        ComPtr<IDispatch> timer;
        EarlyTick tick;
    };
    std::deque<Pair> pairs(5);
    for (Pair& pair : pairs) {
        pair.timer = Create(L"KWOTimer");
        pair.tick.interfaceId = mTick.interfaceId;
        pair.tick.onTick = [&pair](IDispatch** timer) {
            EXPECT_EQ(*timer, pair.timer.Get());
            return S_OK;
        };
        Set(pair.timer.Get(), L"TimerEvents", static_cast<IDispatch*>(&pair.tick));
        Let(pair.timer.Get(), L"Interval", 10);
        Let(pair.timer.Get(), L"Enabled", true);
    }

    EXPECT_TRUE(ProcessUntil(
        [&] { return std::ranges::all_of(pairs, [](const Pair& pair) { return pair.tick.calls >= 2; }); }));
    for (Pair& pair : pairs) {
        Call(pair.timer.Get(), L"CancelTimers");
        EXPECT_EQ(pair.timer.Reset(), 0u);
        EXPECT_EQ(pair.tick.references, 0u);
    }
}

}  // namespace
}  // namespace kwo::com_test
