#include "contract_test.h"

namespace kwo::contract {
namespace {

constexpr std::uint32_t kAlertable = 2;

class MessageLoopContract : public ContractTest {
protected:
    std::function<void()> Note(char c) {
        return [this, c] { ran += c; };
    }
    template <class Body>
    std::uint32_t Duration(Body&& body) {
        const std::uint32_t before = platform().clock.TickCount();
        body();
        return platform().clock.TickCount() - before;
    }
    /// What other programs may have sent meanwhile must not end the waits of a test.
    void SetUp() override { messages.ProcessPending(); }

    platform::MessageLoop& messages = platform().messages;
    std::string ran;
};

TEST_F(MessageLoopContract, WaitForNothingLastsItsTimeout) {
    for (const bool extended : {true, false}) {
        const std::uint32_t passed = Duration([&] {
            if (extended) {
                messages.WaitForInputEx(80, kAnyInput, kAlertable);
            } else {
                messages.WaitForInput(80, kAnyInput);
            }
        });
        EXPECT_GE(passed, 50u) << extended;
        EXPECT_LT(passed, 30'000u) << extended;
    }
}

TEST_F(MessageLoopContract, WaitOfNoTimeReturnsAtOnce) {
    EXPECT_LT(Duration([&] { messages.WaitForInputEx(0, kAnyInput, kAlertable); }), 5'000u);
    EXPECT_LT(Duration([&] { messages.WaitForInput(0, kAnyInput); }), 5'000u);
}

TEST_F(MessageLoopContract, MessageEndsAWaitButRunsOnlyWhenProcessed) {
    for (const bool extended : {true, false}) {
        ran.clear();
        outside().Post(Note('a'));
        const std::uint32_t passed = Duration([&] {
            if (extended) {
                messages.WaitForInputEx(60'000, kAnyInput, kAlertable);
            } else {
                messages.WaitForInput(60'000, kAnyInput);
            }
        });
        EXPECT_LT(passed, 30'000u) << extended;
        EXPECT_EQ(ran, "") << extended;
        messages.ProcessPending();
        EXPECT_EQ(ran, "a") << extended;
    }
}

TEST_F(MessageLoopContract, WaitThatDoesNotListenLastsItsTimeout) {
    outside().Post(Note('a'));

    EXPECT_GE(Duration([&] { messages.WaitForInput(80, 0); }), 50u);
    EXPECT_EQ(ran, "");
}

TEST_F(MessageLoopContract, PendingMessagesRunInOrderUntilNoneIsLeft) {
    outside().Post([this] {
        ran += '1';
        outside().Post(Note('3'));
    });
    outside().Post(Note('2'));

    messages.ProcessPending();

    EXPECT_EQ(ran, "123");
}

TEST_F(MessageLoopContract, AFloodOfMessagesDoesNotHoldTheCaller) {
    constexpr int kEndless = 500;
    int handled = 0;
    std::function<void()> handler = [&] {
        messages.WaitForInput(12, 0);  // its work
        if (++handled < kEndless) outside().Post(handler);
    };
    outside().Post(handler);

    EXPECT_TRUE(messages.ProcessPending());
    EXPECT_LT(handled, 100);

    // The message that is left ends a wait, though it is not new.
    const int before = handled;
    EXPECT_LT(Duration([&] { messages.WaitForInput(60'000, kAnyInput); }), 30'000u);
    messages.ProcessPending();
    EXPECT_GT(handled, before);

    handled = kEndless;
    messages.ProcessPending();
}

TEST_F(MessageLoopContract, ProcessingMayBeNested) {
    outside().Post([this] {
        ran += '(';
        messages.ProcessPending();
        ran += ')';
    });
    outside().Post(Note('x'));

    messages.ProcessPending();

    EXPECT_EQ(ran, "(x)");
}

TEST_F(MessageLoopContract, RequestToQuitStaysInTheQueue) {
    outside().RequestQuit();
    outside().Post(Note('a'));

    messages.ProcessPending();
    messages.ProcessPending();

    EXPECT_EQ(ran, "a");
    EXPECT_TRUE(outside().TakeQuitRequest());
}

}  // namespace
}  // namespace kwo::contract
