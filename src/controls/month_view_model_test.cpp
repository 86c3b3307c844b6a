#include <random>

#include "controls/month_view_fixture.h"
#include "controls/naive_calendar_fixture.h"

namespace kwo::controls {
namespace {

class MonthViewModel : public MonthViewTest {};

TEST_F(MonthViewModel, RandomOperationsAgreeWithTheRules) {
    constexpr int kRounds = 50'000;
    std::mt19937 random(20261121);
    const auto pick = [&](int below) { return static_cast<int>(random() % static_cast<unsigned>(below)); };
    NaiveCalendar naive;
    naive.focus = On(2026, 11, 21).days;
    Date focus{naive.focus};
    ASSERT_TRUE(view->Create(box, focus, {.notifyOnChange = true, .canChange = true}));
    // What the form does when it is asked: nothing, refuse, raise after refusing, or look around from inside.
    int mood = 0;
    const auto answer = [&](std::span<Variant> given) {
        if (mood == 1 || mood == 2) given.back() = true;
        if (mood == 2) platform::Raise(1234, u"form", u"no");
        if (mood == 3) {
            if (view->SelDay() != Date{}) view->SelDaysAdd(view->SelDay());
            view->MouseMove(0, 0);
            view->Resize();
            view->MouseUp();
        }
    };
    onMonth = answer;
    onDate = answer;
    // Drawing is another test's affair, and most of the time.
    box->FailMember(u"Font", Refusal());
    int clicks = 0;
    for (int round = 0; round < kRounds; ++round) {
        mood = pick(8);
        naive.refuses = mood == 1;
        const double near = naive.focus + pick(200) - 100;
        switch (pick(16)) {
            case 0: {
                const int offset = pick(2) == 0 ? -1 : 1;
                Key(offset < 0 ? 33 : 34);
                naive.Change(offset);
                break;
            }
            case 1:
            case 2:
            case 3:
            case 4: {
                const int steps[] = {-7, 7, -1, 1};
                const std::int16_t codes[] = {38, 40, 37, 39};
                const int which = pick(4);
                Key(codes[which]);
                naive.Arrow(steps[which]);
                break;
            }
            case 5:
                view->SetMinDate({near});
                naive.SetMin(near);
                break;
            case 6:
                view->SetMaxDate({near + 200});
                naive.SetMax(near + 200);
                break;
            case 7:
                if (pick(4) != 0) break;
                view->SetMinDate({0});
                naive.SetMin(0);
                break;
            case 8: {
                const double date = near + pick(4) * 0.25;
                view->SelDaysAdd({date});
                naive.Add(date);
                break;
            }
            case 9:
                view->SelDaysRemove({near});
                naive.Remove(near);
                break;
            case 10:
                Key(pick(2) == 0 ? 13 : 32);
                naive.Toggle();
                break;
            case 11:
            case 12: {
                const auto at = NaiveCalendar::At(naive.focus);
                const unsigned day = static_cast<unsigned>(pick(28)) + 1;
                Click(at.year, at.month, day);
                naive.Click(NaiveCalendar::Serial(at.year, static_cast<int>(at.month), static_cast<int>(day)));
                ++clicks;
                break;
            }
            case 13:
                naive.multi = pick(2) == 0;
                view->SetMultiSelect(naive.multi);
                break;
            case 14:
                if (pick(50) == 0) {
                    view->SelDaysClear();
                    naive.selected.clear();
                }
                break;
            default: {
                const int month = pick(12) + 1;
                const int year = 2020 + pick(15);
                view->ShowMonth(static_cast<std::int16_t>(month), static_cast<std::int16_t>(year));
                naive.Show(year, month);
                break;
            }
        }
        const auto at = NaiveCalendar::At(naive.focus);
        ASSERT_EQ(view->VisibleMonth(), static_cast<int>(at.month)) << round;
        ASSERT_EQ(view->VisibleYear(), at.year) << round;
        ASSERT_EQ(view->IsSelected({near}), naive.Has(near)) << round;
        ASSERT_EQ(view->SelDay().days != 0, !naive.selected.empty()) << round;
        if (!naive.selected.empty()) {
            ASSERT_EQ(std::lrint(view->SelDay().days), naive.selected.front()) << round;
        }
        if (round % 64 == 0) desktop.log.Clear();
        // The set stays as small as people keep theirs.
        if (naive.selected.size() > 60) {
            view->SelDaysClear();
            naive.selected.clear();
        }
    }
    EXPECT_GT(clicks, kRounds / 20);
}

}  // namespace
}  // namespace kwo::controls
