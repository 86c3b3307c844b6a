#include "frame/message_wait.h"

#include "frame/frame_fixture.h"
#include "frame/rounding.h"

namespace kwo::frame {
namespace {

class MessageWaitTest : public FrameTest {};

TEST_F(MessageWaitTest, ZeroOrLessReturnsAtOnceWithoutProcessingMessages) {
    bool ran = false;
    desktop.Post([&] { ran = true; });
    wait.KWO_Wait(0, true);
    wait.KWO_Wait(-1, true);
    EXPECT_FALSE(ran);
    EXPECT_TRUE(desktop.log.Lines().empty());
}

TEST_F(MessageWaitTest, WaitsForTheWholeTimeAlertablyForAnyInput) {
    wait.KWO_Wait(1000, true);
    EXPECT_EQ(desktop.clock.Elapsed(), platform::Milliseconds::Whole(1000));
    EXPECT_EQ(desktop.log.Lines(), (Lines{"Pump", "WaitEx 1000 mask=0xff flags=0x2", "Pump"}));
}

TEST_F(MessageWaitTest, OutsideTheNtFamilyItWaitsTheOlderWay) {
    LeaveTheNtFamily();
    wait.KWO_Wait(1000, false);
    EXPECT_EQ(desktop.log.Lines(), (Lines{"Pump", "Wait 1000 mask=0xff"}));
}

TEST_F(MessageWaitTest, MessagesRunInsideAndTheRemainderIsWaitedFor) {
    std::vector<std::int64_t> ranAt;
    desktop.PostAt(0, [&] { ranAt.push_back(desktop.clock.Elapsed().scaled / 10'000); });
    desktop.PostAt(400, [&] { ranAt.push_back(desktop.clock.Elapsed().scaled / 10'000); });
    wait.KWO_Wait(1000, true);
    EXPECT_EQ(ranAt, (std::vector<std::int64_t>{0, 400}));
    EXPECT_EQ(desktop.clock.Elapsed(), platform::Milliseconds::Whole(1000));
    EXPECT_EQ(desktop.log.Starting("WaitEx 600").size(), 1u);
}

TEST_F(MessageWaitTest, WithoutPumpingOnlyWhatIsPendingAtTheStartRuns) {
    int ran = 0;
    desktop.Post([&] { ++ran; });
    desktop.PostAt(10, [&] { ++ran; });
    wait.KWO_Wait(1000, false);
    EXPECT_EQ(ran, 1);
    EXPECT_EQ(desktop.clock.Elapsed(), platform::Milliseconds::Whole(1000));
}

TEST_F(MessageWaitTest, EndsWhenAMessageTookLongerThanTheWait) {
    desktop.PostAt(10, [&] { desktop.Advance(5000); });
    wait.KWO_Wait(100, true);
    EXPECT_EQ(desktop.clock.Elapsed(), platform::Milliseconds::Whole(5010));
}

TEST_F(MessageWaitTest, GivesUpWhenTheProgramIsAskedToQuit) {
    EXPECT_TRUE(wait.KWO_Wait(1000, true));
    desktop.PostAt(400, [&] { desktop.messages.RequestQuit(); });
    EXPECT_FALSE(wait.KWO_Wait(1000, true));
    EXPECT_EQ(desktop.clock.Elapsed(), platform::Milliseconds::Whole(1400));
    EXPECT_FALSE(wait.KWO_Wait(1000, true)) << "it is still asked to";
    EXPECT_FALSE(wait.KWO_Wait(1000, false));
    EXPECT_EQ(desktop.clock.Elapsed(), platform::Milliseconds::Whole(1400));
}

TEST_F(MessageWaitTest, WithoutPumpingARequestToQuitShowsOnlyAtTheStart) {
    desktop.PostAt(400, [&] { desktop.messages.RequestQuit(); });
    EXPECT_TRUE(wait.KWO_Wait(1000, false));
    EXPECT_EQ(desktop.clock.Elapsed(), platform::Milliseconds::Whole(1000));
}

TEST_F(MessageWaitTest, WaitingForInputEndsWithAMessageThatStaysInTheQueue) {
    bool ran = false;
    desktop.PostAt(40, [&] { ran = true; });
    wait.WaitForInput(100);
    EXPECT_FALSE(ran);
    EXPECT_EQ(desktop.clock.Elapsed(), platform::Milliseconds::Whole(40));
    EXPECT_EQ(desktop.log.Lines(), (Lines{"WaitEx 100 mask=0xff flags=0x2"}));
}

TEST(RoundingTest, HalvesGoToTheEvenNeighbour) {
    struct Row {
        std::int64_t scaled, whole;
    };
    for (const Row& row : {Row{4'999, 0}, Row{5'000, 0}, Row{5'001, 1}, Row{15'000, 2}, Row{25'000, 2}, Row{25'001, 3},
                           Row{-5'000, 0}, Row{-5'001, -1}, Row{-15'000, -2}, Row{-25'000, -2}, Row{0, 0}}) {
        EXPECT_EQ(RoundHalfEven({row.scaled}), row.whole) << row.scaled;
    }
}

}  // namespace
}  // namespace kwo::frame
