#include "controls/month_dates.h"

#include <gtest/gtest.h>

#include "platform/simulated/calendar.h"
#include "support/raised.h"

namespace kwo::controls {
namespace {

using platform::simulated::MomentOf;
using test_support::RaisedNumber;

TEST(MonthDates, AgreeWithTheCalendarFromItsFirstDayToItsLast) {
    for (double day = kFirstDate; day <= kLastDate; day += 11) {
        const auto moment = MomentOf({day});
        const CalendarDay taken = DayOf({day});
        ASSERT_EQ(taken.year, moment.year);
        ASSERT_EQ(taken.month, static_cast<int>(moment.month));
        ASSERT_EQ(taken.day, static_cast<int>(moment.day));
        ASSERT_EQ(DateOf(taken.year, taken.month, taken.day).days, day);
        ASSERT_EQ((WeekdayOf({day}) + 1) % 7, static_cast<int>(moment.weekday));
    }
}

TEST(MonthDates, DaysAndMonthsRunOn) {
    EXPECT_EQ(DateOf(2026, 13, 1), DateOf(2027, 1, 1));
    EXPECT_EQ(DateOf(2026, 0, 1), DateOf(2025, 12, 1));
    EXPECT_EQ(DateOf(2026, -11, 1), DateOf(2025, 1, 1));
    EXPECT_EQ(DateOf(2026, -12, 1), DateOf(2024, 12, 1));
    EXPECT_EQ(DateOf(2026, 2, 32), DateOf(2026, 3, 4));
    EXPECT_EQ(DateOf(2024, 2, 32), DateOf(2024, 3, 3));
    EXPECT_EQ(DateOf(2026, 3, 0), DateOf(2026, 2, 28));
}

TEST(MonthDates, AMonthEndsWithItsLastDay) {
    const int lengths[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    for (int month = 1; month <= 12; ++month) {
        const Date date = DateOf(2026, month, 15);
        EXPECT_EQ(LastOfMonth(date), DateOf(2026, month, lengths[month - 1]));
        EXPECT_EQ(FirstOfMonth(date), DateOf(2026, month, 1));
    }
    EXPECT_EQ(DayOf(LastOfMonth(DateOf(2024, 2, 1))).day, 29);
    EXPECT_EQ(DayOf(LastOfMonth(DateOf(1900, 2, 1))).day, 28);
    EXPECT_EQ(DayOf(LastOfMonth(DateOf(2000, 2, 1))).day, 29);
}

TEST(MonthDates, AMoveKeepsTheDayOrTakesTheLastOne) {
    EXPECT_EQ(MovedByMonths(DateOf(2026, 1, 31), 1), DateOf(2026, 2, 28));
    EXPECT_EQ(MovedByMonths(DateOf(2024, 1, 31), 1), DateOf(2024, 2, 29));
    EXPECT_EQ(MovedByMonths(DateOf(2026, 3, 31), -1), DateOf(2026, 2, 28));
    EXPECT_EQ(MovedByMonths(DateOf(2026, 12, 15), 1), DateOf(2027, 1, 15));
    EXPECT_EQ(MovedByMonths(DateOf(2026, 1, 15), -1), DateOf(2025, 12, 15));
    EXPECT_EQ(MovedByMonths(DateOf(2026, 5, 31), 0), DateOf(2026, 5, 31));
    EXPECT_EQ(RaisedNumber([] { MovedByMonths(DateOf(9999, 12, 31), 1); }), 5);
    EXPECT_EQ(RaisedNumber([] { MovedByMonths(DateOf(100, 1, 1), -1); }), 5);
}

TEST(MonthDates, WhatIsOutsideOfTheCalendarIsRefused) {
    EXPECT_EQ(RaisedNumber([] { DayOf({kFirstDate - 1}); }), 5);
    EXPECT_EQ(RaisedNumber([] { DayOf({kLastDate + 1}); }), 5);
    EXPECT_EQ(RaisedNumber([] { DayOf({std::nan("")}); }), 5);
    EXPECT_EQ(RaisedNumber([] { DayOf({INFINITY}); }), 5);
    EXPECT_EQ(RaisedNumber([] { DateOf(32'767, 32'767, 1); }), 5);
    EXPECT_EQ(RaisedNumber([] { DayOf({kLastDate + 0.5}); }), 0);
}

TEST(MonthDates, TimesOfDayAreCutTowardsDayZero) {
    EXPECT_EQ(WholeDays({45'000.75}), Date{45'000});
    EXPECT_EQ(WholeDays({-2.75}), Date{-2});
}

TEST(SelectedDaysTest, ASetThatKeepsItsOrder) {
    SelectedDays days;
    EXPECT_EQ(days.First(), Date{});
    EXPECT_TRUE(days.Add({45'000}));
    EXPECT_TRUE(days.Add({44'000}));
    EXPECT_FALSE(days.Add({45'000}));
    EXPECT_EQ(days.First(), Date{45'000});
    EXPECT_TRUE(days.Remove({45'000}));
    EXPECT_FALSE(days.Remove({45'000}));
    EXPECT_EQ(days.First(), Date{44'000});
    EXPECT_TRUE(days.Add({45'000}));
    EXPECT_EQ(days.First(), Date{44'000});
    days.Clear();
    EXPECT_FALSE(days.Has({44'000}));
}

TEST(SelectedDaysTest, DatesAreRoundedToTheNearestDayHalvesToEven) {
    SelectedDays days;
    days.Add({45'001});
    EXPECT_TRUE(days.Has({45'000.75}));
    EXPECT_TRUE(days.Has({45'001.4}));
    EXPECT_FALSE(days.Has({45'000.5}));
    EXPECT_FALSE(days.Has({45'001.5}));
    days.Add({45'002.5});
    EXPECT_TRUE(days.Has({45'002}));
    EXPECT_EQ(RaisedNumber([&] { days.Add({1e12}); }), 6);
}

}  // namespace
}  // namespace kwo::controls
