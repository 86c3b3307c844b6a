#include "timer_client.h"

namespace kwo::com_test {
namespace {

/// What the host gave to a timer may call it once more when it is let go, with a pointer that counts no reference.
class TimerEnd : public TimerClient {
protected:
    void SetUp() override {
        TimerClient::SetUp();
        mTick.interfaceId = IdOfType(L"_IKWOTimer");
        mAlarm.interfaceId = IdOfType(L"_IKWOAlarm");
        Connect(NewSink());
    }
    void TearDown() override {
        TimerClient::TearDown();
        EXPECT_EQ(0u, mTick.references);
        EXPECT_EQ(0u, mAlarm.references);
    }
    void GiveCallbacks() {
        ASSERT_EQ(Hex(S_OK), Hex(Set(mTimer.Get(), L"TimerEvents", static_cast<IDispatch*>(&mTick)).status));
        ASSERT_EQ(Hex(S_OK), Hex(Set(mTimer.Get(), L"AlarmEvents", static_cast<IDispatch*>(&mAlarm)).status));
    }

    Leaving<EarlyTick> mTick;
    Leaving<EarlyAlarm> mAlarm;
};

TEST_F(TimerEnd, AlarmThatACallbackAddsAtItsEndIsCancelledWithTheOthers) {
    GiveCallbacks();
    int ended = 0;
    mTick.onEnd = mAlarm.onEnd = [&] {
        ++ended;
        EXPECT_EQ(Hex(S_OK), Hex(AddRelative(10, ended).status));
    };

    EXPECT_EQ(Hex(S_OK), Hex(Call(mTimer.Get(), L"CancelTimers").status));
    EXPECT_EQ(2, ended);
    WaitForAnother(100);

    EXPECT_EQ(0, mSinks.front().calls);
}

TEST_F(TimerEnd, AlarmThatACallbackAddsToTheTimerThatEndsGoesWithIt) {
    GiveCallbacks();
    IDispatch* const timer = mTimer.Get();
    int ended = 0;
    mTick.onEnd = mAlarm.onEnd = [&] {
        ++ended;
        Call(timer, L"AddRelativeAlarm", {10, ended});
        Let(timer, L"Interval", 10);
        Let(timer, L"Enabled", true);
    };

    mTimer.Reset();
    EXPECT_EQ(2, ended);
    WaitForAnother(100);

    EXPECT_EQ(0, mSinks.front().calls);
}

TEST_F(TimerEnd, EverythingThatTheHostGaveMayUseTheTimerThatEnds) {
    IDispatch* const timer = mTimer.Get();
    Leaving<Sink> sink;
    Leaving<Sink> item;
    // They are given to the timer while it ends, and must not be kept.
    Sink lateSink;
    Sink lateItem;
    EarlyTick lateTick;
    lateTick.interfaceId = mTick.interfaceId;
    int ended = 0;
    const auto onEnd = [&] {
        ++ended;
        Call(timer, L"AddRelativeAlarm", {10, ended});
        Get(timer, L"Item");
        Get(timer, L"TimerEvents");
        Set(timer, L"Item", static_cast<IDispatch*>(&lateItem));
        Set(timer, L"TimerEvents", static_cast<IDispatch*>(&lateTick));
        DWORD cookie = 0;
        PointOf(timer)->Advise(&lateSink, &cookie);
        Call(timer, L"TimerTick", {1});
        Call(timer, L"CancelTimers");
        Call(timer, L"AddRelativeAlarm", {10, ended});
    };
    sink.onEnd = item.onEnd = mTick.onEnd = mAlarm.onEnd = onEnd;
    GiveCallbacks();
    Set(timer, L"Item", static_cast<IDispatch*>(&item));
    DWORD cookie = 0;
    ASSERT_EQ(Hex(S_OK), Hex(Point()->Advise(&sink, &cookie)));

    mTimer.Reset();

    EXPECT_EQ(4, ended);
    EXPECT_EQ(0u, sink.references);
    EXPECT_EQ(0u, item.references);
    EXPECT_EQ(0u, lateSink.references);
    EXPECT_EQ(0u, lateItem.references);
    EXPECT_EQ(0u, lateTick.references);
    WaitForAnother(100);
}

}  // namespace
}  // namespace kwo::com_test
