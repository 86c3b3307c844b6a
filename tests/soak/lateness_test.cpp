#include "lateness.h"

#include <gtest/gtest.h>

namespace kwo::soak {
namespace {

TEST(Lateness, TellsWhatAPartDoesNotExceed) {
    Lateness lateness;
    EXPECT_EQ(lateness.Quantile(0.5), 0);
    for (int at = 1; at <= 100; ++at)
        lateness.Add(at);

    EXPECT_EQ(lateness.Count(), 100);
    EXPECT_NEAR(lateness.Quantile(0.5), 50, 0.11);
    EXPECT_NEAR(lateness.Quantile(0.99), 99, 0.11);
    EXPECT_EQ(lateness.Quantile(1), 100);
    EXPECT_EQ(lateness.Worst(), 100);
}

TEST(Lateness, CountsWhatIsEarlyAsPunctualAndWhatIsVeryLate) {
    Lateness lateness;
    lateness.Add(-3);
    EXPECT_EQ(lateness.Worst(), 0);
    EXPECT_EQ(lateness.Quantile(1), 0);
    lateness.Add(60'000);
    EXPECT_EQ(lateness.Worst(), 60'000);
    EXPECT_NEAR(lateness.Quantile(0.5), 0.1, 0.01);
    EXPECT_EQ(lateness.Count(), 2);
}

TEST(Beats, AreCountedBetweenTwoMomentsNeitherOfWhichCounts) {
    Beats beats(0);
    for (const double moment : {10.0, 20.0, 30.0, 40.0})
        beats.Add(moment);

    EXPECT_EQ(beats.Between(0, 50), 4);
    EXPECT_EQ(beats.Between(10, 40), 2);
    EXPECT_EQ(beats.Between(41, 50), 0);
    EXPECT_EQ(beats.Between(30, 20), 0);
}

TEST(Beats, KnowTheLongestGapFromTheFirstLookOn) {
    Beats beats(100);
    EXPECT_EQ(beats.LongestGap(), 0);
    beats.Add(130);
    beats.Add(140);
    EXPECT_EQ(beats.LongestGap(), 30);
    beats.Add(190);
    EXPECT_EQ(beats.LongestGap(), 50);
}

TEST(Beats, KeepTheLatest) {
    Beats beats(0);
    for (int at = 1; at <= 100'000; ++at)
        beats.Add(at);

    EXPECT_EQ(beats.Between(99'000, 100'001), 1'000);
    EXPECT_EQ(beats.Between(0, 100'001), 16'384);
}

class RhythmOf100 : public testing::Test {
protected:
    RhythmOf100() { rhythm.Begin(1'000, 1'000, 100); }
    Rhythm rhythm;
};

TEST_F(RhythmOf100, RunsUntilItIsStopped) {
    EXPECT_TRUE(rhythm.Runs());
    EXPECT_EQ(rhythm.PeriodMs(), 100);
    EXPECT_EQ(rhythm.Due(), 1'100);
    EXPECT_EQ(rhythm.Last(), 0);
    rhythm.Stop();
    EXPECT_FALSE(rhythm.Runs());
    EXPECT_FALSE(Rhythm().Runs());
}

TEST_F(RhythmOf100, KeepsItsBeginHoweverLateOneComes) {
    EXPECT_EQ(rhythm.Came(1'100, true), 0);
    EXPECT_EQ(rhythm.Due(), 1'200);
    EXPECT_EQ(rhythm.Came(1'230, true), 30);
    EXPECT_EQ(rhythm.Last(), 1'230);
    EXPECT_EQ(rhythm.Due(), 1'300);
    EXPECT_EQ(rhythm.Came(1'301, true), 1);
}

TEST_F(RhythmOf100, WhatComesTooSoonIsEarly) {
    EXPECT_LT(rhythm.Came(1'099, true), 0);
    EXPECT_EQ(rhythm.Came(1'100, true), 0);
    EXPECT_LT(rhythm.Came(1'199.5, true), 0);
}

TEST_F(RhythmOf100, ReadingsOfTheClockMayDifferInTheirRounding) {
    EXPECT_EQ(rhythm.Came(1'099.9995, true), 0);
}

TEST_F(RhythmOf100, WhatComesTwiceIsOneTooMany) {
    EXPECT_EQ(rhythm.Came(1'150, true), 50);
    EXPECT_LT(rhythm.Came(1'151, false), 0);
    EXPECT_LT(rhythm.Came(1'199, true), 0);
    EXPECT_EQ(rhythm.Came(1'200, true), 0);
}

TEST_F(RhythmOf100, MissedOnesComeOnce) {
    EXPECT_EQ(rhythm.Came(1'550, true), 450);
    EXPECT_EQ(rhythm.Due(), 1'600);
    EXPECT_LT(rhythm.Came(1'551, false), 0);
    EXPECT_EQ(rhythm.Came(1'604, true), 4);
}

/// The component may have read the clock before the last one was due.
TEST_F(RhythmOf100, WhatIsDueWhileOneIsDeliveredMayComeInTheSameTurn) {
    EXPECT_EQ(rhythm.Came(1'310, true), 210);
    EXPECT_EQ(rhythm.Came(1'311, false), 0);
    EXPECT_LT(rhythm.Came(1'312, false), 0);
}

TEST_F(RhythmOf100, ButNotInTheNextTurn) {
    EXPECT_EQ(rhythm.Came(1'310, true), 210);
    EXPECT_LT(rhythm.Came(1'311, true), 0);
}

TEST_F(RhythmOf100, BeginsAgainWithAnotherPeriod) {
    rhythm.Came(1'150, true);
    rhythm.Begin(5'000, 5'000, 30);
    EXPECT_EQ(rhythm.Last(), 0);
    EXPECT_LT(rhythm.Came(5'029, true), 0);
    EXPECT_EQ(rhythm.Came(5'031, true), 1);
}

TEST(Rhythm, CountsFromTheEarliestBeginUntilTheLatestIsCertain) {
    Rhythm rhythm;
    rhythm.Begin(1'000, 1'040, 100);
    EXPECT_EQ(rhythm.Came(1'100, true), 0);
    // The first one was due at 1,140 at the latest, so this may be the second already.
    EXPECT_EQ(rhythm.Came(1'200, true), 0);
    EXPECT_LT(rhythm.Came(1'250, true), 0);
}

TEST(Rhythm, WhatMayAlreadyBeTheNextOneIsNotOneTooMany) {
    Rhythm rhythm;
    rhythm.Begin(1'000, 1'040, 100);
    EXPECT_EQ(rhythm.Came(1'210, true), 110);
    EXPECT_EQ(rhythm.Came(1'215, true), 0);
    EXPECT_LT(rhythm.Came(1'220, true), 0);
}

}  // namespace
}  // namespace kwo::soak
