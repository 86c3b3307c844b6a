#include "platform/simulated/simulated_message_loop.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

#include "platform/simulated/simulated_desktop.h"

namespace kwo::platform::simulated {
namespace {

class SimulatedMessageLoopTest : public testing::Test {
protected:
    static constexpr std::uint32_t kAnyInput = 0xFF;

    std::function<void()> Note(char c) {
        return [this, c] { ran += c; };
    }
    std::int64_t Now() const { return clock.Elapsed().scaled / Milliseconds::kScale; }

    SimulatedDesktop desktop;
    SimulatedClock& clock = desktop.clock;
    SimulatedMessageLoop& queue = desktop.messages;
    std::string ran;
};

TEST_F(SimulatedMessageLoopTest, RunsWhatIsDueByTimeThenByOrderOfPosting) {
    queue.PostAt(20, Note('c'));
    queue.PostAt(10, Note('a'));
    queue.PostAt(10, Note('b'));
    queue.PostAt(31, Note('d'));
    clock.Advance(30);
    queue.Post(Note('e'));

    queue.ProcessPending();

    EXPECT_EQ(ran, "abce");
    EXPECT_EQ(queue.Waiting(), 1u);
    clock.Advance(1);
    queue.ProcessPending();
    EXPECT_EQ(ran, "abced");
}

TEST_F(SimulatedMessageLoopTest, WhatAnActionPostsRunsInTheSameGo) {
    queue.Post([this] {
        ran += '1';
        queue.Post(Note('3'));
    });
    queue.Post(Note('2'));

    queue.ProcessPending();

    EXPECT_EQ(ran, "123");
}

TEST_F(SimulatedMessageLoopTest, AnActionMayProcessTheQueueItself) {
    queue.Post([this] {
        ran += '(';
        queue.ProcessPending();
        ran += ')';
    });
    queue.Post(Note('x'));

    queue.ProcessPending();

    EXPECT_EQ(ran, "(x)");
}

TEST_F(SimulatedMessageLoopTest, WaitMovesTheClockToTheNextMessageOrTheTimeout) {
    queue.PostAt(300, Note('a'));

    queue.WaitForInputEx(200, kAnyInput, 2);
    EXPECT_EQ(Now(), 200);
    queue.WaitForInput(200, kAnyInput);
    EXPECT_EQ(Now(), 300);
    EXPECT_EQ(ran, "");
    EXPECT_EQ(desktop.log.Lines(), (std::vector<std::string>{"WaitEx 200 mask=0xff flags=0x2", "Wait 200 mask=0xff"}));
}

TEST_F(SimulatedMessageLoopTest, WaitEndsAtItsLastMillisecond) {
    queue.PostAt(200, Note('a'));
    queue.PostAt(401, Note('b'));

    queue.WaitForInput(200, kAnyInput);
    EXPECT_EQ(Now(), 200);
    queue.WaitForInput(200, kAnyInput);
    EXPECT_EQ(Now(), 400);
}

TEST_F(SimulatedMessageLoopTest, MessageEndsOneWaitOnly) {
    queue.Post(Note('a'));

    queue.WaitForInput(100, kAnyInput);
    EXPECT_EQ(Now(), 0);
    queue.WaitForInput(100, kAnyInput);
    EXPECT_EQ(Now(), 100);
    EXPECT_EQ(queue.Waiting(), 1u);
}

TEST_F(SimulatedMessageLoopTest, WaitThatDoesNotListenSleepsOn) {
    queue.PostAt(10, Note('a'));

    queue.WaitForInput(100, 0);

    EXPECT_EQ(Now(), 100);
}

TEST_F(SimulatedMessageLoopTest, FailingWaitReturnsAtOnce) {
    desktop.faults.FailCall("MsgWaitForMultipleObjects", 1, 87);

    queue.WaitForInput(100, kAnyInput);

    EXPECT_EQ(Now(), 0);
    EXPECT_EQ(desktop.errors.Last(), 87);
}

TEST_F(SimulatedMessageLoopTest, WaitThatNothingEndsIsATestsMistake) {
    EXPECT_THROW(queue.WaitForInput(0xFFFFFFFF, kAnyInput), std::logic_error);
}

TEST_F(SimulatedMessageLoopTest, WaitForEverEndsWithTheNextMessage) {
    queue.PostAt(90'000, Note('a'));

    queue.WaitForInput(0xFFFFFFFF, kAnyInput);

    EXPECT_EQ(Now(), 90'000);
}

TEST_F(SimulatedMessageLoopTest, QuitRequestEndsOneWaitOnly) {
    queue.RequestQuit();

    queue.WaitForInput(100, kAnyInput);
    EXPECT_EQ(Now(), 0);
    queue.WaitForInput(100, kAnyInput);
    EXPECT_EQ(Now(), 100);
}

TEST_F(SimulatedMessageLoopTest, QuitRequestStaysForTheHost) {
    queue.RequestQuit();
    queue.Post(Note('a'));

    queue.WaitForInput(100, kAnyInput);
    EXPECT_EQ(Now(), 0);
    queue.ProcessPending();
    queue.WaitForInput(100, kAnyInput);

    EXPECT_EQ(ran, "a");
    EXPECT_EQ(Now(), 100);
    EXPECT_TRUE(queue.QuitRequested());
}

}  // namespace
}  // namespace kwo::platform::simulated
