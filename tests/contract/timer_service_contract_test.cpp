
#include "contract_test.h"
#include "platform/timer_service.h"

namespace kwo::contract {
namespace {

class CountingHandler final : public platform::TimerHandler {
public:
    void TimerProc() noexcept override {
        ++calls;
        if (onCall) onCall();
    }

    int calls = 0;
    std::function<void()> onCall;
};

class TimerServiceContract : public ContractTest {
protected:
    /// Messages are processed until `handler` was called that often, or much too long.
    void ProcessUntil(const CountingHandler& called, int calls) {
        constexpr std::uint32_t kTooLongMs = 30'000;
        const std::uint32_t begin = platform().clock.TickCount();
        while (called.calls < calls && platform().clock.TickCount() - begin < kTooLongMs) {
            platform().messages.WaitForInput(20, kAnyInput);
            platform().messages.ProcessPending();
        }
    }
    void ProcessFor(std::uint32_t ms) {
        const std::uint32_t begin = platform().clock.TickCount();
        while (platform().clock.TickCount() - begin < ms) {
            platform().messages.WaitForInput(20, kAnyInput);
            platform().messages.ProcessPending();
        }
    }
    /// Time passes and no message is processed. One wait alone may end early.
    void WaitIdly(std::uint32_t ms) {
        const std::uint32_t begin = platform().clock.TickCount();
        while (platform().clock.TickCount() - begin < ms)
            platform().messages.WaitForInput(20, 0);
    }

    platform::TimerService& timers = platform().timers;
    CountingHandler handler;
};

TEST_F(TimerServiceContract, FiresAgainAndAgainUntilItIsStopped) {
    const std::uint32_t begin = platform().clock.TickCount();
    const std::int32_t id = timers.Start(50, handler);
    ASSERT_NE(id, 0);

    ProcessUntil(handler, 3);
    EXPECT_GE(handler.calls, 3);
    EXPECT_GE(platform().clock.TickCount() - begin, 120u);

    timers.Stop(id);
    const int calls = handler.calls;
    ProcessFor(200);
    EXPECT_EQ(handler.calls, calls);
}

TEST_F(TimerServiceContract, FiresOnlyWhileMessagesAreProcessed) {
    const std::int32_t id = timers.Start(50, handler);

    WaitIdly(200);
    EXPECT_EQ(handler.calls, 0);
    platform().messages.ProcessPending();
    EXPECT_EQ(handler.calls, 1) << "what was missed comes once";

    timers.Stop(id);
}

TEST_F(TimerServiceContract, MessageOfATimerThatWasStoppedIsLost) {
    const std::int32_t id = timers.Start(10, handler);
    WaitIdly(100);

    timers.Stop(id);
    ProcessFor(100);

    EXPECT_EQ(handler.calls, 0);
}

TEST_F(TimerServiceContract, TwoTimersAreKeptApart) {
    CountingHandler other;
    const std::int32_t id = timers.Start(20, handler);
    const std::int32_t otherId = timers.Start(20, other);
    EXPECT_NE(id, otherId);

    timers.Stop(id);
    ProcessUntil(other, 2);

    EXPECT_EQ(handler.calls, 0);
    EXPECT_GE(other.calls, 2);
    timers.Stop(otherId);
}

TEST_F(TimerServiceContract, HandlerMayStopItsTimerAndStartAnother) {
    std::int32_t id = timers.Start(10, handler);
    handler.onCall = [&] {
        timers.Stop(id);
        id = handler.calls < 3 ? timers.Start(10, handler) : 0;
    };

    ProcessUntil(handler, 3);
    ProcessFor(100);

    EXPECT_EQ(handler.calls, 3);
}

TEST_F(TimerServiceContract, HandlerThatProcessesMessagesIsEnteredAgain) {
    int depth = 0;
    int deepest = 0;
    handler.onCall = [&] {
        deepest = std::max(deepest, ++depth);
        if (depth == 1) ProcessUntil(handler, handler.calls + 1);
        --depth;
    };
    const std::int32_t id = timers.Start(10, handler);

    ProcessUntil(handler, 2);

    EXPECT_EQ(deepest, 2);
    timers.Stop(id);
}

TEST_F(TimerServiceContract, StoppingWhatIsNoTimerDoesNothing) {
    const std::int32_t id = timers.Start(10, handler);
    timers.Stop(0);
    timers.Stop(-1);
    timers.Stop(id + 1);

    ProcessUntil(handler, 1);
    EXPECT_GE(handler.calls, 1);
    timers.Stop(id);
    timers.Stop(id);
}

TEST_F(TimerServiceContract, DelayOfNothingIsAShortOne) {
    const std::int32_t id = timers.Start(0, handler);
    ASSERT_NE(id, 0);

    ProcessUntil(handler, 2);
    EXPECT_GE(handler.calls, 2);
    timers.Stop(id);
}

}  // namespace
}  // namespace kwo::contract
