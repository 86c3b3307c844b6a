#include "timers/timer_registry.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <iomanip>
#include <limits>
#include <random>

#include "platform/component_error.h"
#include "timers/time_double.h"
#include "timers/timer_fixture.h"

namespace kwo::timers {
namespace {

using platform::Date;
using platform::Milliseconds;

constexpr Date kNoDate{};

class TimerRegistry : public TimerTest {
protected:
    void AddRelative(TimerOwner& owner, std::int64_t ms, std::int32_t tag) {
        timers.AddAlarmEntry(owner, kNoDate, tag, DueIn(ms));
    }
    void AddRelativeScaled(TimerOwner& owner, std::int64_t scaled, std::int32_t tag) {
        timers.AddAlarmEntry(owner, kNoDate, tag, {desktop.clock.Elapsed().scaled + scaled});
    }
    void AddAt(TimerOwner& owner, Date when, std::int32_t tag) { timers.AddAlarmEntry(owner, when, tag, {}); }
    /// Milliseconds from now to the row's due time.
    double Wait(std::int32_t row) {
        return Milliseconds{timers.Table().Row(row).due.scaled - desktop.clock.Elapsed().scaled}.AsDouble();
    }
    std::int32_t RaisedBy(const std::function<void()>& body) {
        try {
            body();
        } catch (const platform::ComponentError& error) {
            return error.number;
        }
        return 0;
    }
    std::vector<std::int32_t> Types() {
        std::vector<std::int32_t> types;
        for (std::int32_t row = 1; row <= timers.Table().SlotCount(); ++row)
            types.push_back(static_cast<std::int32_t>(timers.Table().Row(row).type));
        return types;
    }
    std::vector<std::int32_t> Tags() {
        std::vector<std::int32_t> tags;
        for (std::int32_t row = 1; row <= timers.Table().SlotCount(); ++row) {
            if (timers.Table().Row(row).type == kAlarm) tags.push_back(timers.Table().Row(row).itemData);
        }
        return tags;
    }
    using Numbers = std::vector<std::int32_t>;
};

TEST_F(TimerRegistry, TableComesWithTheFirstTimerAndHasTwoRows) {
    EXPECT_EQ(timers.Table().SlotCount(), 0);

    timers.AdjustTimerCount(+1);
    EXPECT_EQ(timers.Table().SlotCount(), 2);
    timers.AdjustTimerCount(+1);
    EXPECT_EQ(timers.Table().SlotCount(), 2);
    EXPECT_EQ(timers.InstanceCount(), 2);
}

TEST_F(TimerRegistry, TableGrowsByTwoRowsWhenAllAreUsedAndNeverShrinks) {
    timers.AdjustTimerCount(+1);
    AddRelative(a, 100, 1);
    AddRelative(a, 100, 2);
    EXPECT_EQ(timers.Table().SlotCount(), 2);

    AddRelative(a, 100, 3);
    EXPECT_EQ(timers.Table().SlotCount(), 4);
    EXPECT_EQ(Types(), (Numbers{kAlarm, kAlarm, kAlarm, kFree}));
    AddRelative(a, 100, 4);
    EXPECT_EQ(timers.Table().SlotCount(), 4);
    AddRelative(a, 100, 5);
    EXPECT_EQ(timers.Table().SlotCount(), 6);

    timers.CancelEntries(a, 0, 0);
    EXPECT_EQ(timers.Table().SlotCount(), 6);
    EXPECT_EQ(timers.Table().ActiveCount(), 0);
}

TEST_F(TimerRegistry, FirstFreeRowIsTakenFirst) {
    for (std::int32_t tag = 1; tag <= 6; ++tag)
        AddRelative(a, 100, tag);
    timers.CancelEntries(a, kAlarm, 5);
    timers.CancelEntries(a, kAlarm, 2);

    AddRelative(b, 100, 70);
    AddRelative(b, 100, 71);

    EXPECT_EQ(Tags(), (Numbers{1, 70, 3, 4, 71, 6}));
}

TEST_F(TimerRegistry, LastTimerThatGoesTakesEveryRowWithIt) {
    timers.AdjustTimerCount(+1);
    timers.AdjustTimerCount(+1);
    timers.AddTick(a, 100);
    AddRelative(b, 100, 1);

    timers.AdjustTimerCount(-1);
    EXPECT_EQ(timers.Table().ActiveCount(), 2);
    timers.AdjustTimerCount(-1);

    EXPECT_EQ(timers.Table().ActiveCount(), 0);
    EXPECT_EQ(a.references, 0);
    EXPECT_EQ(b.references, 0);
    EXPECT_EQ(timers.TimerId(), 0);
}

TEST_F(TimerRegistry, EveryRowGoesWhenTheThreadEnds) {
    timers.AdjustTimerCount(+1);
    timers.AddTick(a, 100);
    AddRelative(a, 100, 3);
    AddRelative(b, 90'000, 1);

    desktop.timers.EndThread();

    EXPECT_EQ(desktop.timers.Running(), 0u);
    EXPECT_EQ(timers.Table().ActiveCount(), 0);
    EXPECT_EQ(a.references, 0);
    EXPECT_EQ(b.references, 0);
    EXPECT_EQ(timers.TimerId(), 0);
    EXPECT_EQ(timers.InstanceCount(), 1);
}

TEST_F(TimerRegistry, RowThatIsAddedWhileEveryRowGoesGoesToo) {
    int ended = 0;
    a.onLastRelease = [&] {
        if (++ended == 1) timers.AddTick(b, 100);
    };
    AddRelative(a, 100, 3);

    timers.CancelAll();

    EXPECT_EQ(ended, 1);
    EXPECT_EQ(timers.Table().ActiveCount(), 0);
    EXPECT_EQ(b.references, 0);
    EXPECT_EQ(desktop.timers.Running(), 0u);
}

TEST_F(TimerRegistry, CountOfTimersThatDoesNotFitOverflows) {
    constexpr std::int16_t kMost = std::numeric_limits<std::int16_t>::max();
    for (int step = 0; step < 65'538; ++step)
        timers.AdjustTimerCount(kMost);
    ASSERT_EQ(timers.InstanceCount(), 65'538 * 32'767);

    EXPECT_EQ(RaisedBy([&] { timers.AdjustTimerCount(kMost); }), 6);
    EXPECT_EQ(timers.InstanceCount(), 65'538 * 32'767);
    timers.AdjustTimerCount(+1);
    EXPECT_EQ(RaisedBy([&] { timers.AdjustTimerCount(+1); }), 6);
}

TEST_F(TimerRegistry, OwnerHasOneTick) {
    timers.AddTick(a, 100);
    timers.AddTick(a, 250);
    timers.AddTick(b, 100);

    EXPECT_EQ(timers.Table().ActiveCount(), 2);
    EXPECT_EQ(timers.Table().Row(1).interval, 250);
    EXPECT_EQ(timers.Table().Row(1).itemData, 0);
    EXPECT_EQ(Wait(1), 250);
}

TEST_F(TimerRegistry, AlarmReplacesItsOwnersAlarmWithTheSameTag) {
    AddRelative(a, 100, 5);
    AddRelative(a, 100, 6);
    AddRelative(b, 100, 5);
    AddRelative(a, 300, 5);

    EXPECT_EQ(timers.Table().ActiveCount(), 3);
    EXPECT_EQ(Wait(1), 300);
    EXPECT_EQ(Wait(2), 100);
    EXPECT_EQ(Wait(3), 100);
}

class ReplacedAlarmIntended : public TimerRegistry {};

TEST_F(ReplacedAlarmIntended, AlarmWithTagZeroReplacesAllAlarmsOfItsOwner) {
    timers.AddTick(a, 100);
    AddRelative(a, 100, 5);
    AddRelative(a, 100, -6);
    AddRelative(b, 100, 7);

    AddRelative(a, 100, 0);

    // A reader would expect one alarm more.
    EXPECT_EQ(Types(), (Numbers{kTick, kAlarm, kFree, kAlarm}));
    EXPECT_EQ(Tags(), (Numbers{0, 7}));
}

TEST_F(ReplacedAlarmIntended, AlarmWithATagLeavesTheOneWithTagZero) {
    AddRelative(a, 100, 0);
    AddRelative(a, 100, 5);

    EXPECT_EQ(Tags(), (Numbers{0, 5}));
}

TEST_F(TimerRegistry, TagsOfEveryValueAreKeptApart) {
    constexpr std::int32_t kMost = std::numeric_limits<std::int32_t>::max();
    constexpr std::int32_t kLeast = std::numeric_limits<std::int32_t>::min();
    const Numbers tags = {kLeast, kLeast + 1, -1, 1, kMost - 1, kMost};
    for (const std::int32_t tag : tags)
        AddRelative(a, 100, tag);
    ASSERT_EQ(Tags(), tags);

    for (const std::int32_t tag : tags)
        timers.CancelEntries(a, kAlarm, tag);
    EXPECT_EQ(timers.Table().ActiveCount(), 0);
}

TEST_F(TimerRegistry, AlarmsAreFoundByTheirTagsHoweverManyThereAre) {
    constexpr std::int32_t kMany = 300;
    for (std::int32_t tag = 1; tag <= kMany; ++tag) {
        AddRelative(a, 100, tag);
        AddRelative(b, 100, tag);
    }
    for (std::int32_t tag = 1; tag <= kMany; ++tag)
        AddRelative(a, 200, tag);
    ASSERT_EQ(timers.Table().ActiveCount(), 2 * kMany) << "each has replaced the one with its tag";

    for (std::int32_t tag = 1; tag <= kMany; ++tag) {
        timers.CancelEntries(b, kAlarm, tag);
        ASSERT_EQ(timers.Table().ActiveCount(), 2 * kMany - tag);
    }
    EXPECT_EQ(a.references, kMany);
    EXPECT_EQ(b.references, 0);
}

TEST_F(TimerRegistry, CancelLooksAtTypeTagAndOwner) {
    struct Case {
        std::int32_t type, tag;
        Numbers left;
    };
    const Case cases[] = {
        {0, 0, {0, 0, 0, 1, 2}},       {0, 7, {0, 0, 0, 1, 2}},      {kTick, 0, {0, 2, 2, 1, 2}},
        {kTick, 5, {0, 2, 2, 1, 2}},   {kAlarm, 5, {1, 0, 2, 1, 2}}, {kAlarm, 0, {1, 0, 0, 1, 2}},
        {kAlarm, 99, {1, 2, 2, 1, 2}}, {3, 0, {1, 2, 2, 1, 2}},      {-1, 0, {1, 2, 2, 1, 2}},
    };
    for (const Case& row : cases) {
        timers.CancelEntries(a, 0, 0);
        timers.CancelEntries(b, 0, 0);
        timers.AddTick(a, 100);
        AddRelative(a, 100, 5);
        AddRelative(a, 100, 6);
        timers.AddTick(b, 100);
        AddRelative(b, 100, 5);

        timers.CancelEntries(a, row.type, row.tag);

        auto types = Types();
        types.resize(5);
        EXPECT_EQ(types, row.left) << "type " << row.type << " tag " << row.tag;
    }
}

TEST_F(TimerRegistry, UsedRowHoldsItsOwner) {
    timers.AddTick(a, 100);
    AddRelative(a, 100, 1);
    EXPECT_EQ(a.references, 2);

    timers.CancelEntries(a, kTick, 0);
    EXPECT_EQ(a.references, 1);
    Pass(100);
    EXPECT_EQ(a.references, 0);
}

TEST_F(TimerRegistry, OwnerThatEndsWithItsLastRowMayCallBack) {
    int ended = 0;
    a.onLastRelease = [&] {
        ++ended;
        timers.CancelEntries(a, 0, 0);
        timers.AdjustTimerCount(-1);
    };
    timers.AdjustTimerCount(+1);
    timers.AddTick(a, 100);
    AddRelative(a, 100, 1);
    AddRelative(a, 100, 2);

    timers.CancelEntries(a, 0, 0);

    EXPECT_EQ(ended, 1);
    EXPECT_EQ(timers.Table().ActiveCount(), 0);
    EXPECT_EQ(timers.TimerId(), 0);
}

TEST_F(TimerRegistry, TickComesAtEveryInterval) {
    timers.AddTick(a, 100);

    Pass(99);
    EXPECT_EQ(Told(), Lines{});
    Pass(1);
    EXPECT_EQ(Told(), Lines{"a tick"});
    Pass(900);
    EXPECT_EQ(Told().size(), 9u);
}

TEST_F(TimerRegistry, MissedTicksAreLeftOut) {
    timers.AddTick(a, 100);

    PassBusy(1'050);

    EXPECT_EQ(Told(), Lines{"a tick"});
    EXPECT_EQ(Wait(1), 50);
    Pass(49);
    EXPECT_EQ(Told(), Lines{});
    Pass(1);
    EXPECT_EQ(Told(), Lines{"a tick"});
}

TEST_F(TimerRegistry, TickDueJustNowIsNextDueAfterAWholeInterval) {
    timers.AddTick(a, 100);

    PassBusy(1'000);

    EXPECT_EQ(Told(), Lines{"a tick"});
    EXPECT_EQ(Wait(1), 100);
}

TEST_F(TimerRegistry, AlarmComesOnceAndIsGoneBeforeItsHandlerRuns) {
    AddRelative(a, 100, 5);
    std::int32_t active = -1;
    a.handler = [&](auto&...) { active = timers.Table().ActiveCount(); };

    Pass(1'000);

    EXPECT_EQ(Told(), Lines{"a alarm 5"});
    EXPECT_EQ(active, 0);
}

TEST_F(TimerRegistry, AlarmAheadComesAtItsDate) {
    AddAt(a, After(5'000), 1);

    EXPECT_NEAR(Wait(1), 5'000, 0.01);
    Pass(4'999);
    EXPECT_EQ(Told(), Lines{});
    Pass(2);
    EXPECT_EQ(Told(), Lines{"a alarm 1"});
}

TEST_F(TimerRegistry, ClockThatIsSetAfterwardsMovesNoAlarm) {
    for (const double days : {1.0, -1.0, 0.5 / 24}) {
        desktop.clock.SetNow({kNow});
        AddAt(a, After(5'000), 1);
        desktop.clock.SetNow({kNow + days});

        Pass(4'999);
        EXPECT_EQ(Told(), Lines{}) << days;
        Pass(2);
        EXPECT_EQ(Told(), Lines{"a alarm 1"}) << days;
    }
}

TEST_F(TimerRegistry, AlarmInThePastFiresAfterOneSecond) {
    for (const double ms : {999.0, 1.0, 0.0, -1.0, -86'400'000.0}) {
        AddAt(a, After(ms), 1);
        EXPECT_EQ(Wait(1), 1'000) << ms;
    }
    AddAt(a, After(1'001), 1);
    EXPECT_NEAR(Wait(1), 1'001, 0.01);

    Pass(1'002);
    EXPECT_EQ(Told(), Lines{"a alarm 1"});
}

TEST_F(TimerRegistry, RelativeAlarmHasNoShortestWait) {
    AddRelative(a, 0, 1);
    AddRelative(a, -60'000, 2);
    EXPECT_EQ(PlatformCalls(), (Lines{"SetTimer 1 -> 32767", "KillTimer 32767", "SetTimer 1 -> 32766"}));

    Pass(1);
    EXPECT_EQ(Told(), (Lines{"a alarm 1", "a alarm 2"}));
}

TEST_F(TimerRegistry, TimeOfDayMeansToday) {
    AddAt(a, {18.0 / 24}, 1);
    EXPECT_NEAR(Wait(1), 8.75 * 3'600'000, 0.01);

    AddAt(a, {8.0 / 24}, 1);
    EXPECT_EQ(Wait(1), 1'000);
}

TEST_F(TimerRegistry, MidnightMeansTheOneThatIsGone) {
    AddAt(a, kNoDate, 1);

    EXPECT_EQ(Wait(1), 1'000);
}

TEST_F(TimerRegistry, TimeThatRoundsToTheNextDayIsADate) {
    desktop.clock.SetNow({kToday + 1.0 - 5.0 / 86'400});
    AddAt(a, {1.0 - 0.6 / 86'400}, 1);
    EXPECT_NEAR(Wait(1), 4'400, 0.01);

    AddAt(a, {1.0 - 0.4 / 86'400}, 1);
    EXPECT_EQ(Wait(1), 1'000);
}

TEST_F(TimerRegistry, WhatTheTextOfADateShowsDecidesWhetherItIsATimeOfDay) {
    // At midnight every time of day but the first second is ahead, and every date before today is not.
    desktop.clock.SetNow({kToday});
    const auto expectedWait = [&](double days) {
        platform::Conversions& conversions = component.platform.conversions;
        const auto shown = conversions.ParseDate(conversions.ToText(Date{days}));
        if (std::trunc(shown.value().days) == 0) days += kToday;
        return std::max(1'000.0, (std::min(days, kToday + 60) - kToday) * kMillisecondsPerDay);
    };
    const auto check = [&](double days) {
        AddAt(a, {days}, 1);
        ASSERT_NEAR(Wait(1), expectedWait(days), 0.1) << std::setprecision(17) << days;
    };
    std::mt19937_64 random(20261122);
    std::uniform_real_distribution<double> timeOfDay(0, 1);
    std::uniform_real_distribution<double> aroundDayZero(-2.5, 2.5);
    std::uniform_real_distribution<double> aroundMidnight(-2.5 / 86'400, 2.5 / 86'400);

    // KWO_ALL_DATES checks every day and a million times instead of a share of them.
    const bool all = std::getenv("KWO_ALL_DATES") != nullptr;
    for (int day = -657'434; day <= 2'958'465; day += all ? 1 : 211)
        check(day < 0 ? day - timeOfDay(random) : day + timeOfDay(random));
    for (int i = 0; i < (all ? 1'000'000 : 4'000); ++i) {
        check(aroundDayZero(random));
        for (const double midnight : {-2.0, -1.0, 1.0, 2.0})
            check(midnight + aroundMidnight(random));
    }
}

TEST_F(TimerRegistry, DayOneIsADateInThePast) {
    AddAt(a, {1.0 + 18.0 / 24}, 1);

    EXPECT_EQ(Wait(1), 1'000);
}

TEST_F(TimerRegistry, DatesOfEveryCenturyAreTaken) {
    constexpr double kFirst = -657'434;  // 0100-01-01
    constexpr double kBefore1601 = -109'206;
    constexpr double kLast = 2'958'465;  // 9999-12-31
    for (const double days : {kFirst, kBefore1601, kBefore1601 + 1, -1.5}) {
        AddAt(a, {days}, 1);
        EXPECT_EQ(Wait(1), 1'000) << days;
    }
    AddAt(a, {kLast}, 1);
    EXPECT_NEAR(Wait(1), (60 - 9.25 / 24) * kMillisecondsPerDay, 0.01);
}

TEST_F(TimerRegistry, WhatIsNoDateIsRefusedAndOnlyTheReplacedAlarmIsLost) {
    constexpr double kInfinite = std::numeric_limits<double>::infinity();
    for (const double days :
         {std::numeric_limits<double>::quiet_NaN(), kInfinite, -kInfinite, 2'958'466.0, -657'435.0, 1e300, -1e300}) {
        timers.CancelEntries(a, 0, 0);
        timers.AddTick(a, 100);
        AddRelative(a, 100, 4);
        AddRelative(a, 100, 5);

        EXPECT_EQ(RaisedBy([&] { AddAt(a, {days}, 5); }), 13) << days;

        EXPECT_EQ(timers.Table().ActiveCount(), 2) << days;
        EXPECT_EQ(Tags(), Numbers{4}) << days;
        EXPECT_EQ(a.references, 2) << days;
    }
}

TEST_F(TimerRegistry, DateThatCannotBeReadFailsAsAMismatch) {
    desktop.FailCall("VarDateFromStr", 1, 1);

    EXPECT_EQ(RaisedBy([&] { AddAt(a, {kToday + 0.99999}, 5); }), 13);
    EXPECT_EQ(timers.Table().ActiveCount(), 0);
}

TEST_F(TimerRegistry, RelativeDueTimeOfZeroMeansTheDate) {
    timers.AddAlarmEntry(a, After(2'000), 1, {0});

    EXPECT_NEAR(Wait(1), 2'000, 0.01);
}

class AlarmLimitIntended : public TimerRegistry {};

TEST_F(AlarmLimitIntended, AlarmsFurtherThanSixtyDaysComeAtThatMidnight) {
    const double toMidnight = (1 - 9.25 / 24) * kMillisecondsPerDay;
    const auto expected = [&](double days) { return toMidnight + (days - 1) * kMillisecondsPerDay; };

    // A reader would expect ninety days.
    AddAt(a, {kToday + 90}, 1);
    EXPECT_NEAR(Wait(1), expected(60), 0.01);
    AddAt(a, {kToday + 60 + 1.0 / 86'400}, 1);
    EXPECT_NEAR(Wait(1), expected(60), 0.01);
    AddAt(a, {kToday + 60 - 1.0 / 86'400}, 1);
    EXPECT_NEAR(Wait(1), expected(60) - 1'000, 0.01);
}

class LongTickIntended : public TimerRegistry {};

TEST_F(LongTickIntended, TickWhoseHandlerTakesLongerThanItsIntervalStarvesTheRowsBelowIt) {
    timers.AddTick(a, 100);
    AddRelative(b, 100, 1);
    timers.AddTick(b, 100);
    int left = 50;
    a.handler = [&](auto&...) {
        desktop.Advance(100);
        if (--left == 0) timers.CancelEntries(a, kTick, 0);
    };

    PassBusy(100);

    // A reader would expect the others after the first tick.
    Lines expected(50, "a tick");
    expected.insert(expected.end(), {"b alarm 1", "b tick"});
    EXPECT_EQ(Told(), expected);
}

TEST_F(LongTickIntended, TickWhoseHandlerIsDoneWithinItsIntervalStarvesNobody) {
    timers.AddTick(a, 100);
    AddRelative(b, 100, 1);
    a.handler = [&](auto&...) { desktop.Advance(99); };

    PassBusy(100);

    EXPECT_EQ(Told(), (Lines{"a tick", "b alarm 1"}));
}

class IdleTimerIntended : public TimerRegistry {};

TEST_F(IdleTimerIntended, PlatformTimerGoesOnAfterTheLastAlarmHasFired) {
    timers.AdjustTimerCount(+1);
    AddRelative(a, 100, 1);
    Pass(100);
    ASSERT_EQ(timers.Table().ActiveCount(), 0);

    // A reader would expect it to be stopped.
    EXPECT_NE(timers.TimerId(), 0);
    EXPECT_EQ(desktop.timers.Running(), 1u);
    EXPECT_EQ(PlatformCalls(), Lines{"SetTimer 100 -> 32767"});
    Pass(1'000);
    EXPECT_EQ(PlatformCalls(), Lines{});

    timers.CancelEntries(a, 0, 0);
    EXPECT_EQ(PlatformCalls(), Lines{"KillTimer 32767"});
}

TEST_F(IdleTimerIntended, RunningTimerIsLeftAloneForAFarRow) {
    AddRelative(a, 100, 1);
    AddRelative(a, 90'000, 2);
    Pass(100);
    PlatformCalls();

    // A reader would expect a new timer of thirty seconds.
    Pass(1'000);
    EXPECT_EQ(PlatformCalls(), Lines{});
    EXPECT_EQ(desktop.timers.Running(), 1u);
}

TEST_F(TimerRegistry, DelayIsWhatTheEarliestRowHasToWait) {
    AddRelative(a, 5'000, 1);
    EXPECT_EQ(PlatformCalls(), Lines{"SetTimer 5000 -> 32767"});
    AddRelative(a, 6'000, 2);
    EXPECT_EQ(PlatformCalls(), Lines{});
    AddRelative(a, 4'000, 3);
    EXPECT_EQ(PlatformCalls(), (Lines{"KillTimer 32767", "SetTimer 4000 -> 32766"}));
}

TEST_F(TimerRegistry, DelayIsRoundedToTheNearestMillisecondHalvesToEven) {
    struct Case {
        std::int64_t scaled;
        int delay;
    };
    const Case cases[] = {{4'999, 0},
                          {5'000, 0},
                          {5'001, 1},
                          {9'999, 1},
                          {14'999, 1},
                          {15'000, 2},
                          {24'999, 2},
                          {25'000, 2},
                          {25'001, 3},
                          {299'994'999, 29'999},
                          {299'995'000, 30'000},
                          {300'000'000, 30'000}};
    for (const Case& row : cases) {
        timers.CancelEntries(a, 0, 0);
        PlatformCalls();
        timers.AddAlarmEntry(a, kNoDate, 1, {desktop.clock.Elapsed().scaled + row.scaled});
        const Lines calls = PlatformCalls();
        ASSERT_EQ(calls.size(), 1u) << row.scaled;
        EXPECT_TRUE(calls[0].starts_with("SetTimer " + std::to_string(row.delay) + " ")) << row.scaled << calls[0];
    }
}

TEST_F(TimerRegistry, FarRowIsWaitedForInSlicesOfThirtySeconds) {
    AddRelative(a, 95'000, 1);
    EXPECT_EQ(PlatformCalls(), Lines{"SetTimer 30000 -> 32767"});

    Pass(89'999);
    EXPECT_EQ(PlatformCalls(), Lines{}) << "a timer that runs is left alone for a far row";
    Pass(1);
    EXPECT_EQ(PlatformCalls(), (Lines{"KillTimer 32767", "SetTimer 5000 -> 32766"}));
}

TEST_F(TimerRegistry, FarRowComesOnTime) {
    AddRelative(a, 95'000, 1);
    Pass(94'999);
    EXPECT_EQ(Told(), Lines{});
    Pass(1);
    EXPECT_EQ(Told(), Lines{"a alarm 1"});
}

TEST_F(TimerRegistry, AlarmWhoseDelayIsRoundedDownComesAfterTheNextMillisecond) {
    for (const std::int64_t scaled : {200'004'999, 10'001, 14'999, 299'994'999}) {
        AddRelativeScaled(a, scaled, 1);
        const std::int64_t due = timers.Table().Row(1).due.scaled;
        PassScaled(scaled - 1);
        EXPECT_EQ(Told(), Lines{}) << scaled;
        PassScaled(kMillisecond);
        EXPECT_EQ(Told(), Lines{"a alarm 1"}) << scaled << " late by " << desktop.clock.Elapsed().scaled - due;
    }
}

TEST_F(TimerRegistry, NoTickIsLostWhenItsDelayIsRoundedDown) {
    desktop.Advance(Milliseconds{1'234});
    timers.AddTick(a, 50);
    // The handler takes its time, so that no wait is a whole number of milliseconds.
    a.handler = [&](auto&...) { desktop.Advance(Milliseconds{3'333}); };

    PassScaled(600 * 50 * kMillisecond + kMillisecond);

    EXPECT_EQ(Told().size(), 600u);
}

TEST_F(TimerRegistry, FiringThatFindsNothingDueWaitsForTheRest) {
    AddRelativeScaled(a, 20'000 * kMillisecond + 4'000, 1);
    PlatformCalls();

    Pass(20'000);
    EXPECT_EQ(PlatformCalls(), (Lines{"KillTimer 32767", "SetTimer 0 -> 32766"}));
    Pass(1);
    EXPECT_EQ(Told(), Lines{"a alarm 1"});
}

TEST_F(TimerRegistry, WaitOfJustThirtySecondsIsNotFar) {
    AddRelative(a, 100, 1);
    timers.AddAlarmEntry(a, kNoDate, 2, DueIn(30'000));
    timers.CancelEntries(a, kAlarm, 1);
    PlatformCalls();

    AddRelative(b, 30'000, 3);
    EXPECT_EQ(PlatformCalls(), (Lines{"KillTimer 32767", "SetTimer 30000 -> 32766"}));
}

TEST_F(TimerRegistry, CancelDoesNotArmThePlatformTimerAgain) {
    AddRelative(a, 100, 1);
    AddRelative(a, 5'000, 2);
    PlatformCalls();

    timers.CancelEntries(a, kAlarm, 1);
    EXPECT_EQ(PlatformCalls(), Lines{});
    timers.CancelEntries(a, kAlarm, 2);
    EXPECT_EQ(PlatformCalls(), Lines{"KillTimer 32767"});
    EXPECT_EQ(timers.TimerId(), 0);
}

TEST_F(TimerRegistry, RefusedPlatformTimerLosesNoRow) {
    desktop.FailCall("SetTimer", 1, 1158);
    AddRelative(a, 100, 1);
    EXPECT_EQ(timers.TimerId(), 0);
    EXPECT_EQ(timers.Table().ActiveCount(), 1);
    Pass(200);
    EXPECT_EQ(Told(), Lines{});

    AddRelative(a, 5'000, 2);

    EXPECT_NE(timers.TimerId(), 0);
    Pass(1);
    EXPECT_EQ(Told(), Lines{"a alarm 1"});
}

TEST_F(TimerRegistry, RowsThatAreDueTogetherComeInTheOrderOfTheTable) {
    AddRelative(a, 300, 1);
    AddRelative(b, 100, 2);
    timers.AddTick(a, 200);

    PassBusy(1'000);

    EXPECT_EQ(Told(), (Lines{"a alarm 1", "b alarm 2", "a tick"}));
}

TEST_F(TimerRegistry, ScanBeginsAgainAfterEachRow) {
    AddRelative(a, 100, 1);
    AddRelative(a, 100, 2);
    AddRelative(a, 100, 3);
    a.handler = [&](std::int32_t&, std::int32_t& tag, Date&) {
        if (tag == 2) AddRelative(b, -5, 9);
    };

    PassBusy(100);

    EXPECT_EQ(Told(), (Lines{"a alarm 1", "a alarm 2", "b alarm 9", "a alarm 3"}))
        << "the new row takes the first free place, before the third";
}

TEST_F(TimerRegistry, RowsThatBecomeDueDuringTheDispatchCome) {
    AddRelative(a, 100, 1);
    AddRelative(b, 150, 2);
    a.handler = [&](auto&...) { desktop.Advance(60); };

    PassBusy(100);

    EXPECT_EQ(Told(), (Lines{"a alarm 1", "b alarm 2"}));
}

TEST_F(TimerRegistry, CalleeMayCancelRowsThatAreDue) {
    AddRelative(a, 100, 1);
    AddRelative(b, 100, 2);
    AddRelative(a, 100, 3);
    a.handler = [&](auto&...) { timers.CancelEntries(b, 0, 0); };

    PassBusy(100);

    EXPECT_EQ(Told(), (Lines{"a alarm 1", "a alarm 3"}));
}

TEST_F(TimerRegistry, CalleeMayCancelEverything) {
    timers.AddTick(a, 100);
    AddRelative(a, 100, 3);
    AddRelative(b, 100, 2);
    a.handler = [&](auto&...) {
        timers.CancelEntries(a, 0, 0);
        timers.CancelEntries(b, 0, 0);
    };

    PassBusy(100);

    EXPECT_EQ(Told(), Lines{"a tick"});
    EXPECT_EQ(timers.TimerId(), 0);
    EXPECT_EQ(a.references, 0);
}

TEST_F(TimerRegistry, PlatformTimerIsArmedOnceAtTheEndOfADispatch) {
    AddRelative(a, 100, 1);
    AddRelative(b, 800, 1);
    a.handler = [&](auto&...) {
        AddRelative(a, 700, 2);
        AddRelative(a, 500, 3);
        AddRelative(a, 600, 4);
        EXPECT_EQ(PlatformCalls(), Lines{"SetTimer 100 -> 32767"});
    };

    PassBusy(100);

    EXPECT_EQ(PlatformCalls(), (Lines{"KillTimer 32767", "SetTimer 500 -> 32766"}));
}

TEST_F(TimerRegistry, CalleeThatProcessesMessagesStopsThePlatformTimerUntilItReturns) {
    timers.AddTick(a, 100);
    bool first = true;
    a.handler = [&](auto&...) {
        if (!std::exchange(first, false)) return;
        desktop.Advance(1'000);
        desktop.messages.ProcessPending();
        EXPECT_EQ(timers.TimerId(), 0);
        EXPECT_EQ(desktop.timers.Running(), 0u);
        desktop.Advance(1'000);
        desktop.messages.ProcessPending();
    };

    PassBusy(100);

    EXPECT_EQ(Told(), (Lines{"a tick", "a tick"})) << "no tick inside a tick; what was missed comes once";
    EXPECT_NE(timers.TimerId(), 0);
    Pass(100);
    EXPECT_EQ(Told(), Lines{"a tick"});
}

TEST_F(TimerRegistry, FailingTickLosesItsRowAndNothingElse) {
    timers.AddTick(a, 100);
    AddRelative(a, 200, 1);
    timers.AddTick(b, 100);
    a.handler = [&](std::int32_t& type, auto&...) {
        if (type == kTick) platform::Raise(5, u"x", u"y");
    };

    Pass(300);

    EXPECT_EQ(Told(), (Lines{"a tick", "b tick", "a alarm 1", "b tick", "b tick"}));
}

TEST_F(TimerRegistry, FailingAlarmLosesTheAlarmsWithItsTag) {
    AddRelative(a, 100, 5);
    AddRelative(a, 300, 6);
    timers.AddTick(a, 1'000);
    a.handler = [&](std::int32_t&, std::int32_t& tag, Date&) {
        if (tag != 5) return;
        AddRelative(a, 300, 5);
        platform::Raise(5, u"x", u"y");
    };

    Pass(400);

    EXPECT_EQ(Told(), (Lines{"a alarm 5", "a alarm 6"}));
    EXPECT_EQ(timers.Table().ActiveCount(), 1);
}

TEST_F(TimerRegistry, TagThatAFailingHandlerWroteIsTheOneThatIsCancelled) {
    AddRelative(a, 100, 5);
    AddRelative(a, 300, 6);
    AddRelative(a, 300, 7);
    a.handler = [](std::int32_t&, std::int32_t& tag, Date&) {
        if (tag != 5) return;
        tag = 6;
        platform::Raise(5, u"x", u"y");
    };

    Pass(400);

    EXPECT_EQ(Told(), (Lines{"a alarm 5", "a alarm 7"}));
}

TEST_F(TimerRegistry, FailingAlarmWithTagZeroLosesAllAlarms) {
    AddRelative(a, 100, 0);
    AddRelative(a, 300, 6);
    a.handler = [](auto&...) { throw std::bad_alloc(); };

    Pass(400);

    EXPECT_EQ(Told(), Lines{"a alarm 0"});
    EXPECT_EQ(timers.Table().ActiveCount(), 0);
}

TEST_F(TimerRegistry, NewDateSetsTheSameAlarmAgain) {
    AddRelative(a, 100, 5);
    a.handler = [](std::int32_t&, std::int32_t&, Date& date) { date = After(600'000); };

    PassBusy(100);
    EXPECT_EQ(Tags(), Numbers{5});
    EXPECT_NEAR(Wait(1), 599'900, 0.01);
    a.handler = {};
    Pass(600'000);
    EXPECT_EQ(Told(), (Lines{"a alarm 5", "a alarm 5"}));
}

TEST_F(TimerRegistry, NewDateFollowsTheRulesOfAlarms) {
    AddRelative(a, 100, 0);
    AddRelative(a, 90'000, 8);
    a.handler = [](std::int32_t&, std::int32_t&, Date& date) { date = {8.0 / 24}; };

    PassBusy(100);

    EXPECT_EQ(Tags(), Numbers{0}) << "tag 0 replaces all";
    EXPECT_EQ(Wait(1), 1'000);
}

TEST_F(TimerRegistry, NewDateThatIsNoneEndsTheAlarmAlone) {
    AddRelative(a, 100, 5);
    AddRelative(a, 200, 6);
    a.handler = [](std::int32_t&, std::int32_t& tag, Date& date) {
        if (tag == 5) date = {std::numeric_limits<double>::quiet_NaN()};
    };

    Pass(300);

    EXPECT_EQ(Told(), (Lines{"a alarm 5", "a alarm 6"}));
    EXPECT_TRUE(desktop.log.Starting("HostLog").empty());
}

TEST_F(TimerRegistry, OwnerLivesUntilItsDispatchIsOver) {
    AddRelative(a, 100, 5);
    int atEnd = -1;
    a.handler = [&](auto&...) { EXPECT_EQ(a.references, 1); };
    a.onLastRelease = [&] { atEnd = timers.Table().ActiveCount(); };

    PassBusy(100);

    EXPECT_EQ(atEnd, 0);
}

/// A clock that fails when it is told to.
class FailingClock final : public platform::Clock {
public:
    explicit FailingClock(platform::Clock& from) : mFrom(from) {}

    std::optional<std::int64_t> CounterFrequency() override { return mFrom.CounterFrequency(); }
    std::int64_t Counter() override {
        if (onRead) onRead();
        return mFrom.Counter();
    }
    std::uint32_t TickCount() override { return mFrom.TickCount(); }
    std::optional<std::int64_t> LocalFileTimeToUtc(std::int64_t time) override {
        return mFrom.LocalFileTimeToUtc(time);
    }
    Date Now() override { return mFrom.Now(); }

    std::function<void()> onRead;

private:
    platform::Clock& mFrom;
};

TEST_F(TimerRegistry, DispatchThatFailsIsLoggedAndTheNextOneGoesOn) {
    FailingClock clock(desktop.clock);
    component::Component failing(WithTime(desktop.Services(), clock, desktop.timers));
    failing.timers.AddTick(a, 100);

    clock.onRead = [] { platform::Raise(5, u"x", u"the clock is broken"); };
    Pass(100);
    EXPECT_EQ(desktop.log.Starting("HostLog"),
              Lines{"HostLog Unexpected error in MKWOTimer.TimerProc: the clock is broken"});
    desktop.log.Clear();
    clock.onRead = [] { throw std::bad_alloc(); };
    Pass(100);
    EXPECT_EQ(desktop.log.Starting("HostLog"), Lines{"HostLog Unexpected error in MKWOTimer.TimerProc: Out of memory"});
    EXPECT_EQ(Told(), Lines{});

    clock.onRead = {};
    Pass(100);
    EXPECT_EQ(Told(), Lines{"a tick"});
    failing.timers.CancelAll();
}

TEST_F(TimerRegistry, FailureThatCannotBeLoggedIsDropped) {
    FailingClock clock(desktop.clock);
    component::Component failing(WithTime(desktop.Services(), clock, desktop.timers));
    failing.timers.AddTick(a, 100);
    clock.onRead = [] { throw std::bad_alloc(); };
    desktop.FailCall("ReportEvent of the host", 1, platform::simulated::Faults::kNoMemory);

    Pass(100);
    EXPECT_TRUE(failing.timers.TimerId() != 0) << "the platform timer goes on";
    EXPECT_EQ(desktop.faults.Calls("ReportEvent of the host"), 1);

    clock.onRead = {};
    Pass(100);
    EXPECT_EQ(Told(), Lines{"a tick"});
    failing.timers.CancelAll();
}

TEST_F(TimerRegistry, RowStaysWhenTheTimeCannotBeReadToArmThePlatformTimer) {
    FailingClock clock(desktop.clock);
    component::Component failing(WithTime(desktop.Services(), clock, desktop.timers));
    int reads = 0;
    clock.onRead = [&] {
        if (++reads == 2) throw std::bad_alloc();
    };

    failing.timers.AddTick(a, 100);
    EXPECT_EQ(failing.timers.Table().ActiveCount(), 1);
    EXPECT_EQ(failing.timers.TimerId(), 0);

    failing.timers.AskAgainForARefusedTimer();
    Pass(100);
    EXPECT_EQ(Told(), Lines{"a tick"});
    failing.timers.CancelAll();
}

TEST_F(TimerRegistry, ComponentThatGoesStopsItsTimer) {
    {
        component::Component other(desktop.Services());
        other.timers.AddTick(a, 100);
        EXPECT_EQ(desktop.timers.Running(), 1u);
        other.timers.CancelEntries(a, 0, 0);
        other.timers.AddAlarmEntry(b, kNoDate, 1, DueIn(50));
    }
    EXPECT_EQ(desktop.timers.Running(), 0u);
    Pass(100);
    EXPECT_EQ(Told(), Lines{});
}

}  // namespace
}  // namespace kwo::timers
