#include "controls/month_model.h"

#include <gtest/gtest.h>

#include <random>

#include "controls/naive_calendar_fixture.h"
#include "support/raised.h"

namespace kwo::controls {
namespace {

using test_support::RaisedNumber;

Date On(int year, unsigned month, unsigned day) {
    return {platform::simulated::DayNumber(year, month, day).value()};
}

MonthModel Focused(Date focus) {
    MonthModel model;
    model.SetFocus(focus);
    return model;
}

struct MonthAndYear {
    int month;
    int year;
    friend bool operator==(MonthAndYear, MonthAndYear) = default;
};
MonthAndYear Visible(const MonthModel& model) {
    return {model.VisibleMonth(), model.VisibleYear()};
}

TEST(MonthModelTest, BeginsWithoutFocusAndWithoutAMonth) {
    const MonthModel model;
    EXPECT_FALSE(model.HasFocus());
    EXPECT_EQ(Visible(model), (MonthAndYear{0, 0}));
    EXPECT_EQ(model.FramedDay(), 0);
    EXPECT_EQ(model.FirstSelected(), Date{});
    EXPECT_TRUE(model.Allows(On(100, 1, 1)));
    EXPECT_TRUE(model.Allows(On(9999, 12, 31)));
}

TEST(MonthModelTest, TheVisibleMonthFollowsTheFocus) {
    MonthModel model = Focused(On(2026, 11, 21));
    EXPECT_TRUE(model.HasFocus());
    EXPECT_EQ(Visible(model), (MonthAndYear{11, 2026}));
    EXPECT_EQ(model.FramedDay(), 21);
    EXPECT_EQ(model.VisibleDate(1), On(2026, 11, 1));
    EXPECT_EQ(model.VisibleDate(32), On(2026, 12, 2));
    EXPECT_EQ(RaisedNumber([&] { model.SetFocus({kLastDate + 1}); }), 5);
    EXPECT_EQ(model.Focus(), On(2026, 11, 21));
    EXPECT_EQ(Visible(model), (MonthAndYear{11, 2026}));
}

TEST(MonthModelTest, AMoveInTheMonthMovesTheFrameToo) {
    MonthModel model = Focused(On(2026, 11, 21));
    EXPECT_TRUE(model.IsInFocusMonth(On(2026, 11, 30)));
    EXPECT_FALSE(model.IsInFocusMonth(On(2026, 12, 1)));
    EXPECT_FALSE(model.IsInFocusMonth(On(2026, 10, 31)));
    model.MoveFocusInMonth(model.DaysFromFocus(7));
    EXPECT_EQ(model.Focus(), On(2026, 11, 28));
    EXPECT_EQ(model.FramedDay(), 28);
}

TEST(MonthModelTest, StepsEndWithTheCalendar) {
    const MonthModel last = Focused(On(9999, 12, 31));
    EXPECT_EQ(RaisedNumber([&] { last.DaysFromFocus(1); }), 5);
    EXPECT_EQ(RaisedNumber([&] { last.MonthsFromFocus(1); }), 5);
    EXPECT_EQ(last.MonthsFromFocus(-1), On(9999, 11, 30));
    const MonthModel first = Focused(On(100, 1, 1));
    EXPECT_EQ(RaisedNumber([&] { first.DaysFromFocus(-1); }), 5);
    EXPECT_EQ(RaisedNumber([&] { first.MonthsFromFocus(-1); }), 5);
}

TEST(MonthModelTest, ShowMonthMovesTheFocusToTheFirstDayOfAnotherMonth) {
    MonthModel model = Focused(On(2026, 11, 21));
    model.ShowMonth(11, 2026);
    EXPECT_EQ(model.Focus(), On(2026, 11, 21));
    model.ShowMonth(11, 2025);
    EXPECT_EQ(model.Focus(), On(2025, 11, 1));
    EXPECT_EQ(model.FramedDay(), 1);
    model.ShowMonth(3, 2025);
    EXPECT_EQ(model.Focus(), On(2025, 3, 1));
    EXPECT_EQ(Visible(model), (MonthAndYear{3, 2025}));
    EXPECT_EQ(RaisedNumber([&] { model.ShowMonth(1, 99); }), 5);
    EXPECT_EQ(Visible(model), (MonthAndYear{3, 2025}));
}

TEST(MonthModelTest, ShowMonthKeepsNumbersBeyondTheYearUntilTheNextFocus) {
    MonthModel model = Focused(On(2026, 11, 21));
    model.ShowMonth(13, 2026);
    EXPECT_EQ(Visible(model), (MonthAndYear{13, 2026}));
    EXPECT_EQ(model.Focus(), On(2027, 1, 1));
    EXPECT_EQ(model.VisibleDate(5), On(2027, 1, 5));
    model.SetFocus(model.Focus());
    EXPECT_EQ(Visible(model), (MonthAndYear{1, 2027}));
}

TEST(MonthModelTest, ShowMonthAsksNoLimit) {
    MonthModel model = Focused(On(2026, 11, 21));
    model.SetMaxDate(On(2026, 12, 31));
    model.ShowMonth(3, 2027);
    EXPECT_EQ(Visible(model), (MonthAndYear{3, 2027}));
    EXPECT_FALSE(model.Allows(model.Focus()));
}

TEST(MonthModelTest, LimitsAreWholeMonths) {
    MonthModel model = Focused(On(2026, 11, 21));
    EXPECT_FALSE(model.SetMinDate({On(2026, 10, 20).days + 0.5}));
    EXPECT_FALSE(model.SetMaxDate({On(2027, 1, 10).days + 0.9}));
    EXPECT_EQ(model.MinDate(), On(2026, 10, 20));
    EXPECT_EQ(model.MaxDate(), On(2027, 1, 10));
    EXPECT_FALSE(model.Allows(On(2026, 9, 30)));
    EXPECT_TRUE(model.Allows(On(2026, 10, 1)));
    EXPECT_TRUE(model.Allows(On(2027, 1, 31)));
    EXPECT_FALSE(model.Allows(On(2027, 2, 1)));
}

TEST(MonthModelTest, AMinimumBehindTheVisibleMonthTakesTheFocus) {
    MonthModel model = Focused(On(2026, 11, 21));
    EXPECT_FALSE(model.SetMinDate(On(2026, 11, 30)));
    EXPECT_EQ(model.Focus(), On(2026, 11, 21));
    EXPECT_TRUE(model.SetMinDate(On(2026, 12, 24)));
    EXPECT_EQ(model.Focus(), On(2026, 12, 24));
    EXPECT_EQ(Visible(model), (MonthAndYear{12, 2026}));
}

TEST(MonthModelTest, LimitsOfNoDayAreRefusedAndChangeNothing) {
    MonthModel model = Focused(On(2026, 11, 21));
    for (const double days : {kLastDate + 1, kFirstDate - 1, std::nan(""), 1e300}) {
        EXPECT_EQ(RaisedNumber([&] { model.SetMinDate({days}); }), 5);
        EXPECT_EQ(RaisedNumber([&] { model.SetMaxDate({days}); }), 5);
    }
    EXPECT_EQ(model.MinDate(), Date{});
    EXPECT_EQ(model.MaxDate(), Date{});
}

using FirstLimitIntended = testing::Test;

TEST_F(FirstLimitIntended, AMinimumIsTakenAsTheFocusWhileNoMonthIsVisible) {
    for (const Date limit : {On(2027, 2, 15), Date{0}, Date{-5}}) {
        MonthModel model;
        EXPECT_TRUE(model.SetMinDate(limit)) << "a reader would expect a limit and no focus";
        EXPECT_EQ(model.Focus(), limit);
        MonthModel other;
        EXPECT_FALSE(other.SetMaxDate(limit));
        EXPECT_FALSE(other.HasFocus());
    }
}

using LastLimitIntended = testing::Test;

TEST_F(LastLimitIntended, AMaximumTakesTheFocusInItsOwnMonthAndWhenItIsCleared) {
    MonthModel model = Focused(On(2026, 11, 21));
    EXPECT_FALSE(model.SetMaxDate(On(2026, 12, 1)));
    EXPECT_TRUE(model.SetMaxDate(On(2026, 11, 30))) << "a reader would expect the focus to stay";
    EXPECT_EQ(model.Focus(), On(2026, 11, 30));
    EXPECT_TRUE(model.SetMaxDate({0}));
    EXPECT_EQ(Visible(model), (MonthAndYear{12, 1899}));
    EXPECT_FALSE(model.HasFocus());
    EXPECT_TRUE(model.Allows(On(2030, 1, 1))) << "no limit";
}

TEST(MonthModelTest, AFrameWithoutAFocus) {
    MonthModel model = Focused(On(2026, 11, 21));
    model.FrameDay(5);
    EXPECT_EQ(model.FramedDay(), 5);
    EXPECT_EQ(model.Focus(), On(2026, 11, 21));
    EXPECT_EQ(Visible(model), (MonthAndYear{11, 2026}));
}

TEST(OneSelectionIntended, AClickReplacesTheSelectionOfTheFocusAlone) {
    MonthModel model = Focused(On(2026, 11, 21));
    model.Select(On(2026, 11, 21));
    model.Select(On(2026, 11, 3));
    model.ClickDay(On(2026, 11, 5));
    EXPECT_FALSE(model.IsSelected(On(2026, 11, 21)));
    EXPECT_TRUE(model.IsSelected(On(2026, 11, 3))) << "a reader expects that one day is selected";
    EXPECT_TRUE(model.IsSelected(On(2026, 11, 5)));
    EXPECT_EQ(model.Focus(), On(2026, 11, 5));
    model.ClickDay(On(2026, 11, 5));
    EXPECT_TRUE(model.IsSelected(On(2026, 11, 5)));
}

TEST(MonthModelTest, WithMultiSelectAClickToggles) {
    MonthModel model = Focused(On(2026, 11, 21));
    model.SetMultiSelect(true);
    model.Select(On(2026, 11, 21));
    model.ClickDay(On(2026, 11, 5));
    EXPECT_TRUE(model.IsSelected(On(2026, 11, 21)));
    EXPECT_TRUE(model.IsSelected(On(2026, 11, 5)));
    model.ClickDay(On(2026, 11, 5));
    EXPECT_FALSE(model.IsSelected(On(2026, 11, 5)));
    EXPECT_EQ(model.Focus(), On(2026, 11, 5));
}

TEST(MonthModelTest, AToggledFocusIsAloneUnlessManyMayBeSelected) {
    for (const bool multi : {false, true}) {
        MonthModel model = Focused(On(2026, 11, 21));
        model.SetMultiSelect(multi);
        model.Select(On(2026, 11, 3));
        model.ToggleFocus();
        EXPECT_TRUE(model.IsSelected(On(2026, 11, 21)));
        EXPECT_EQ(model.IsSelected(On(2026, 11, 3)), multi);
        model.ToggleFocus();
        EXPECT_FALSE(model.IsSelected(On(2026, 11, 21)));
        EXPECT_EQ(model.IsSelected(On(2026, 11, 3)), multi);
    }
}

TEST(MonthModelTest, InvalidDatesAreNeverSelected) {
    MonthModel model;
    model.Select({1e300});
    EXPECT_FALSE(model.IsSelected({1e300}));
    EXPECT_EQ(model.FirstSelected(), Date{});
    model.Deselect({1e300});
}

/// What a calendar whose form refuses everything, or nothing, makes of the model.
struct Driven {
    MonthModel model;
    bool refuses = false;

    void Change(Date target) {
        if (model.Allows(target) && !refuses) model.SetFocus(target);
    }
    void Arrow(int days) {
        const Date target = model.DaysFromFocus(days);
        if (!model.IsInFocusMonth(target)) {
            Change(target == Date{} ? model.Focus() : target);
        } else if (target != Date{}) {
            model.MoveFocusInMonth(target);
        }
    }
    void Click(std::int16_t day) {
        const Date clicked = model.VisibleDate(day);
        model.FrameDay(day);
        if (!refuses) model.ClickDay(clicked);
    }
};

TEST(MonthModelTest, AMillionRandomOperationsAgreeWithTheRules) {
    constexpr int kRounds = 1'000'000;
    std::mt19937 random(20261121);
    const auto pick = [&](int below) { return static_cast<int>(random() % static_cast<unsigned>(below)); };
    Driven driven;
    MonthModel& model = driven.model;
    NaiveCalendar naive;
    int framed = 0;  // apart from the focus after a refused click
    const auto restart = [&](double focus) {
        naive.focus = focus;
        model.SetFocus({focus});
    };
    int clicks = 0, refusals = 0;
    for (int round = 0; round < kRounds; ++round) {
        // In turn around today and around the date 0, which means no date.
        if (round % 1000 == 0) {
            restart(round % 2000 == 0 ? On(2026, 11, 21).days : 40);
            model.SetMinDate({0});
            naive.SetMin(0);
        }
        driven.refuses = naive.refuses = pick(8) == 0;
        const double near = naive.focus + pick(200) - 100;
        const double before = naive.focus;
        bool refused = false;
        switch (pick(15)) {
            case 0: {
                const int offset = pick(2) == 0 ? -1 : 1;
                driven.Change(model.MonthsFromFocus(offset));
                naive.Change(offset);
                break;
            }
            case 1:
            case 2:
            case 3:
            case 4: {
                const int steps[] = {-7, 7, -1, 1};
                const int days = steps[pick(4)];
                if (!model.HasFocus()) break;
                driven.Arrow(days);
                naive.Arrow(days);
                break;
            }
            case 5:
                if (model.SetMinDate({near})) driven.Change(model.Focus());
                naive.SetMin(near);
                break;
            case 6: {
                const double limit = pick(20) == 0 ? 0 : near + 200;
                if (model.SetMaxDate({limit})) driven.Change(model.Focus());
                naive.SetMax(limit);
                break;
            }
            case 7: {
                const double date = near + pick(4) * 0.25;
                model.Select({date});
                naive.Add(date);
                break;
            }
            case 8:
                model.Deselect({near});
                naive.Remove(near);
                break;
            case 9:
                if (!driven.refuses) model.ToggleFocus();
                naive.Toggle();
                break;
            case 10:
            case 11: {
                const auto at = NaiveCalendar::At(naive.focus);
                const int day = pick(28) + 1;
                driven.Click(static_cast<std::int16_t>(day));
                naive.Click(NaiveCalendar::Serial(at.year, static_cast<int>(at.month), day));
                framed = day;
                refused = driven.refuses;
                refusals += refused;
                ++clicks;
                break;
            }
            case 12:
                naive.multi = pick(2) == 0;
                model.SetMultiSelect(naive.multi);
                break;
            case 13:
                if (pick(50) != 0) break;
                model.DeselectAll();
                naive.selected.clear();
                break;
            default: {
                const int month = pick(12) + 1;
                const int year = NaiveCalendar::At(naive.focus).year + pick(3) - 1;
                model.ShowMonth(static_cast<std::int16_t>(month), static_cast<std::int16_t>(year));
                driven.Change(model.Focus());
                naive.Show(year, month);
                break;
            }
        }
        const auto at = NaiveCalendar::At(naive.focus);
        ASSERT_EQ(model.Focus().days, naive.focus) << round;
        ASSERT_EQ(Visible(model), (MonthAndYear{static_cast<int>(at.month), at.year})) << round;
        if (refused) {
            ASSERT_EQ(model.FramedDay(), framed) << round;
            restart(naive.focus);
        } else if (naive.focus != before) {
            ASSERT_EQ(model.FramedDay(), static_cast<int>(at.day)) << round;
        }
        ASSERT_EQ(model.IsSelected({near}), naive.Has(near)) << round;
        ASSERT_EQ(std::lrint(model.FirstSelected().days), naive.selected.empty() ? 0 : naive.selected.front()) << round;
        ASSERT_EQ(model.Allows({near}),
                  (naive.minStart == 0 || near >= naive.minStart) && (naive.maxEnd == 0 || near <= naive.maxEnd))
            << round;
        // The set stays as small as people keep theirs.
        if (naive.selected.size() > 60) {
            model.DeselectAll();
            naive.selected.clear();
        }
    }
    EXPECT_GT(clicks, kRounds / 20);
    EXPECT_GT(refusals, kRounds / 200);
}

}  // namespace
}  // namespace kwo::controls
