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
        EXPECT_EQ(mTick.references, 0u);
        EXPECT_EQ(mAlarm.references, 0u);
    }
    void GiveCallbacks() {
        ASSERT_EQ(Hex(Set(mTimer.Get(), L"TimerEvents", static_cast<IDispatch*>(&mTick)).status), Hex(S_OK));
        ASSERT_EQ(Hex(Set(mTimer.Get(), L"AlarmEvents", static_cast<IDispatch*>(&mAlarm)).status), Hex(S_OK));
    }

    Leaving<EarlyTick> mTick;
    Leaving<EarlyAlarm> mAlarm;
};

TEST_F(TimerEnd, AlarmThatACallbackAddsAtItsEndIsCancelledWithTheOthers) {
    GiveCallbacks();
    int ended = 0;
    mTick.onEnd = mAlarm.onEnd = [&] {
        ++ended;
        EXPECT_EQ(Hex(AddRelative(10, ended).status), Hex(S_OK));
    };

    EXPECT_EQ(Hex(Call(mTimer.Get(), L"CancelTimers").status), Hex(S_OK));
    EXPECT_EQ(ended, 2);
    WaitForAnother(100);

    EXPECT_EQ(mSinks.front().calls, 0);
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
    EXPECT_EQ(ended, 2);
    WaitForAnother(100);

    EXPECT_EQ(mSinks.front().calls, 0);
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
    ASSERT_EQ(Hex(Point()->Advise(&sink, &cookie)), Hex(S_OK));

    mTimer.Reset();

    EXPECT_EQ(ended, 4);
    EXPECT_EQ(sink.references, 0u);
    EXPECT_EQ(item.references, 0u);
    EXPECT_EQ(lateSink.references, 0u);
    EXPECT_EQ(lateItem.references, 0u);
    EXPECT_EQ(lateTick.references, 0u);
    WaitForAnother(100);
}

}  // namespace
}  // namespace kwo::com_test
