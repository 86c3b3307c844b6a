#include "controls/month_view.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "controls_stage.h"

namespace kwo::fault_tests {

namespace {

using controls::kLeftButton;
using controls::KWOMonthView;

constexpr Date kFocus{46347};     // 2026-11-21
constexpr Date kSelected{46350};  // 2026-11-24
constexpr Date kProbe{46000};
// A day's cell, and the arrow to the next month, in twips.
constexpr float kDayX = 1000, kDayY = 2000;
constexpr float kArrowX = 100, kArrowY = 100;

struct MonthViewStage : ControlsStage {
    MonthViewStage() {
        object.emplace(*component);
        desktop.clock.msPerReading = 1;
    }
    std::string Create() {
        Date focus{kFocus.days + 0.25};
        const bool created = Member([&] {
            return object->Create(box, focus,
                                  {.selDate = kSelected,
                                   .canMultiSelect = Text(u"1"),
                                   .spinInterval = Text(u"100"),
                                   .notifyOnChange = Text(u"1"),
                                   .control = HostObjectRef(other),
                                   .canChange = Text(u"1")});
        });
        return Shown(created);
    }
    /// An event of the host, which shows its user what a member raises.
    void PostEvent(std::int64_t delayMs, std::function<void()> event) {
        desktop.PostAt(delayMs, [event = std::move(event)] {
            const platform::simulated::UncountedMemory memory;
            try {
                Member(event);
            } catch (const platform::ComponentError&) {
            } catch (const std::bad_alloc&) {
            }
        });
    }
    /// Whether the calendar is there: only then a day can be added to the selection.
    std::string State() override {
        if (!object) return "no object";
        object->SelDaysAdd(kProbe);
        const bool isThere = object->IsSelected(kProbe);
        object->SelDaysRemove(kProbe);
        return isThere ? "a calendar" : "no calendar";
    }
    void Release() override {
        object.reset();
        ControlsStage::Release();
    }

    std::optional<KWOMonthView> object;
};

/// False, and the host's error is the saved one.
Expected IsSaved() {
    return [](const Failure& failure, const Reference& reference) {
        const std::string text = failure.code == 380 ? "Refused." : "Planned failure.";
        Outcome outcome = reference.clean;
        outcome.answer = "False";
        outcome.state = "no calendar";
        outcome.saved = std::to_string(failure.code) + " KWOMonthView.Create: " + text;
        return std::vector{outcome};
    };
}

/// The same, or without a saved error if only the drawing ended.
Expected IsNotCreated() {
    return [](const Failure& failure, const Reference& reference) {
        Outcome drawing = reference.clean;
        drawing.answer = "False";
        drawing.state = "no calendar";
        return std::vector{IsSaved()(failure, reference).front(), drawing};
    };
}

/// An error of the host reaches the caller; one while the calendar is drawn ends the drawing.
Expected RaisesOrEndsTheDrawing() {
    return Either(Raises("a calendar"), SameAnswer());
}

std::vector<Rule> DrawingRules() {
    return {
        {"PictureBox.*", RaisesOrEndsTheDrawing()},
        {"Font.*", RaisesOrEndsTheDrawing()},
        // A form that fails refuses nothing.
        {"Form.Call On*", SameAnswer()},
        {"VariantChangeType", RaisesOrEndsTheDrawing()},
        {"VarFormat", RaisesOrEndsTheDrawing()},
        {"Draw*", SameAnswer()},
        {"GetLocaleInfo", SameAnswer()},
        {"GetTimeZoneInformation", SameAnswer()},
        {"IsWindow", SameAnswer()},
        {"QueryPerformanceFrequency", SameAnswer()},
        {"GetVersionEx", SameAnswer()},
        {"MsgWaitForMultipleObjects*", SameAnswer()},
    };
}

template <class Body>
Scenario Drawn(std::string name, std::vector<std::string> members, Body run) {
    return {std::move(name), std::move(members),
            Prepared<MonthViewStage>([](MonthViewStage& stage) { stage.Create(); }), On<MonthViewStage>(run),
            DrawingRules()};
}

/// A property that is set and read back.
template <class Set, class Get>
Scenario Property(const char* name, Set set, Get get) {
    return Drawn(std::string("TheProperty") + name + "IsSet",
                 {std::string("KWOMonthView.get ") + name, std::string("KWOMonthView.let ") + name},
                 [set, get](MonthViewStage& stage) {
                     Member([&] { set(*stage.object); });
                     return std::to_string(get(*stage.object));
                 });
}

#define PROPERTY(name, value) \
    Property(                 \
        #name, [](KWOMonthView& view) { view.Set##name(value); }, [](KWOMonthView& view) { return view.name(); })

int SelectedDays(const KWOMonthView& view) {
    int count = 0;
    for (double day = kFocus.days - 60; day < kFocus.days + 60; ++day)
        count += view.IsSelected({day}) ? 1 : 0;
    return count;
}

/// Runs a member that changes the selection. Whether or not it fails, `least` days or more are selected afterwards, and
/// SelDay is one of them.
template <class Body>
void Selecting(MonthViewStage& stage, int least, Body body) {
    const auto look = [&] {
        const KWOMonthView& view = *stage.object;
        const int count = SelectedDays(view);
        EXPECT_GE(count, least) << "a selection was lost";
        EXPECT_EQ(view.IsSelected(view.SelDay()), count > 0) << "a day is selected only by half";
    };
    try {
        Member(body);
    } catch (...) {
        look();
        throw;
    }
    look();
}

/// A calendar in which the user may select one day, and `selected` is the one.
Scenario AloneScenario(std::string name, std::string member, Date selected, std::function<void(KWOMonthView&)> select) {
    Scenario scenario = Drawn(std::move(name), {std::move(member)}, [selected, select](MonthViewStage& stage) {
        KWOMonthView& view = *stage.object;
        while (view.SelDay() != Date{})
            view.SelDaysRemove(view.SelDay());
        view.SelDaysAdd(selected);
        Selecting(stage, 1, [&] { select(view); });
        return "";
    });
    scenario.stage = Prepared<MonthViewStage>([](MonthViewStage& stage) {
        stage.Create();
        stage.object->SetMultiSelect(false);
    });
    return scenario;
}

std::string Key(MonthViewStage& stage, std::int16_t key) {
    Member([&] { stage.object->KeyDown(key); });
    return std::to_string(key);
}

}  // namespace

std::vector<Scenario> MonthViewScenarios() {
    std::vector<Rule> creation = {
        // Without a type name the members decide what is a picture box; a member that cannot be found is not there.
        {"PictureBox.TypeName*", Unnoticed(), IsOutOfMemory("no calendar")},
        {"PictureBox.Knows*", Answers("False"), IsOutOfMemory("no calendar")},
    };
    // What is asked before the drawing.
    for (const char* call :
         {"PictureBox.Get Parent", "PictureBox.Get ForeColor", "PictureBox.Get Width", "PictureBox.Get Height",
          "PictureBox.Let AutoRedraw", "PictureBox.Let BackColor", "PictureBox.Let FillStyle",
          "PictureBox.Let FontTransparent", "PictureBox.Call TextHeight", "TextBox.Get hWnd"})
        creation.push_back({call, IsSaved(), IsOutOfMemory("no calendar")});
    for (Rule rule : DrawingRules()) {
        const bool fails =
            rule.call.find("Box") != std::string::npos || rule.call.starts_with("Font") || rule.call.starts_with("Var");
        if (fails) rule.expected = IsNotCreated();
        rule.withoutMemory = IsOutOfMemory("no calendar");
        creation.push_back(rule);
    }
    creation.push_back({"Form.*", IsNotCreated(), IsOutOfMemory("no calendar")});

    // The window is asked for readers alone, and the texts are loaded for them.
    creation.insert(creation.begin(), {"PictureBox.Get hWnd", Unnoticed(), IsOutOfMemory("no calendar")});
    for (Rule& rule : creation) {
        if (rule.call == "VariantChangeType") rule.expected = Either(rule.expected, Unnoticed());
    }
    std::vector<Rule> spoken = creation;
    for (Rule& rule : spoken)
        rule = {rule.call, Either(rule.expected, RaisesOrEndsTheDrawing()), Either(IsOutOfMemory(), Unnoticed())};
    for (const char* call : {"SetHwndProp*", "ClearHwndProps", "CoCreateInstance", "Companion.*", "GetModuleFileName",
                             "GetFileVersionInfo", "GetFileAttributes", "FormatMessage"})
        spoken.insert(spoken.begin(), {call, Unnoticed(), Unnoticed()});

    std::vector<Scenario> scenarios = {
        {"ACalendarIsCreated",
         {"KWOMonthView.Create"},
         Fresh<MonthViewStage>(),
         On<MonthViewStage>([](MonthViewStage& stage) { return stage.Create(); }),
         creation,
         IsOutOfMemory("no calendar")},
        {"ACalendarIsCreatedAgain",
         {"KWOMonthView.Create"},
         Prepared<MonthViewStage>([](MonthViewStage& stage) { stage.Create(); }),
         On<MonthViewStage>([](MonthViewStage& stage) { return stage.Create(); }),
         creation,
         IsOutOfMemory("no calendar")},
        {"AReaderIsToldOfACalendar",
         {"KWOMonthView.Create", "KWOMonthView.KeyDown", "KWOMonthView.let MinDate"},
         Fresh<MonthViewStage>(),
         On<MonthViewStage>([](MonthViewStage& stage) {
             stage.desktop.accessibility.Install();
             std::string created = stage.Create();
             Key(stage, platform::Key::kSpace);
             return created;
         }),
         spoken,
         Either(IsOutOfMemory(), Unnoticed())},
        PROPERTY(CanSelect, true),
        PROPERTY(MultiSelect, false),
        PROPERTY(CaptionFontBold, true),
        PROPERTY(DayHdrFontBold, true),
        PROPERTY(DayFontBold, true),
        PROPERTY(SelDayFontBold, true),
        PROPERTY(CaptionFontColor, 255),
        PROPERTY(DayHdrFontColor, 255),
        PROPERTY(DayFontColor, 255),
        PROPERTY(SelDayFontColor, 255),
        PROPERTY(CaptionBevel, 2),
        PROPERTY(DayHdrBevel, 1),
        PROPERTY(DayBevel, 2),
        Drawn("AMonthIsShown",
              {"KWOMonthView.ShowMonth", "KWOMonthView.get VisibleMonth", "KWOMonthView.get VisibleYear"},
              [](MonthViewStage& stage) {
                  Member([&] { stage.object->ShowMonth(3, 2027); });
                  return std::to_string(stage.object->VisibleMonth()) + ' ' +
                         std::to_string(stage.object->VisibleYear());
              }),
        Drawn("AnEarliestDateIsSet", {"KWOMonthView.get MinDate", "KWOMonthView.let MinDate"},
              [](MonthViewStage& stage) {
                  Member([&] { stage.object->SetMinDate({46400}); });
                  return Shown(Variant(stage.object->MinDate()));
              }),
        Drawn("ALatestDateIsSet", {"KWOMonthView.get MaxDate", "KWOMonthView.let MaxDate"},
              [](MonthViewStage& stage) {
                  Member([&] { stage.object->SetMaxDate({46300}); });
                  return Shown(Variant(stage.object->MaxDate()));
              }),
        Drawn("ADayIsPressed", {"KWOMonthView.MouseDown", "KWOMonthView.MouseUp"},
              [](MonthViewStage& stage) {
                  Member([&] {
                      stage.object->MouseDown(kLeftButton, kDayX, kDayY);
                      stage.object->MouseUp();
                  });
                  return "";
              }),
        Drawn("AnArrowIsPressed", {"KWOMonthView.MouseDown"},
              [](MonthViewStage& stage) {
                  // The press ends by itself.
                  stage.desktop.messages.RequestQuit();
                  Member([&] { stage.object->MouseDown(kLeftButton, kArrowX, kArrowY); });
                  return "";
              }),
        Drawn("AnArrowIsHeld", {"KWOMonthView.MouseDown", "KWOMonthView.MouseMove", "KWOMonthView.MouseUp"},
              [](MonthViewStage& stage) {
                  // While the arrow is held, the pointer leaves it, and the button is released.
                  stage.PostEvent(20, [&stage] { stage.object->MouseMove(0, kDayY); });
                  stage.PostEvent(40, [&stage] { stage.object->MouseUp(); });
                  Member([&] { stage.object->MouseDown(kLeftButton, kArrowX, kArrowY); });
                  return "";
              }),
        Drawn("ADoubleClickEnds", {"KWOMonthView.DblClick", "KWOMonthView.MouseMove"},
              [](MonthViewStage& stage) {
                  Member([&] {
                      stage.object->MouseDown(2, kDayX, kDayY);
                      stage.object->DblClick();
                      stage.object->MouseMove(kDayX, kDayY);
                  });
                  return "";
              }),
        Drawn("ABoxIsResized", {"KWOMonthView.Resize"},
              [](MonthViewStage& stage) {
                  Member([&] { stage.object->Resize(); });
                  return "";
              }),
        Drawn("DaysAreSelected",
              {"KWOMonthView.SelDaysAdd", "KWOMonthView.SelDaysRemove", "KWOMonthView.get SelDay",
               "KWOMonthView.get IsSelected"},
              [](MonthViewStage& stage) {
                  Member([&] {
                      stage.object->SelDaysAdd({46360});
                      stage.object->SelDaysAdd({46360});
                      stage.object->SelDaysRemove({46360});
                  });
                  return Shown(Variant(stage.object->SelDay())) + ' ' + Shown(stage.object->IsSelected({46360}));
              }),
        Drawn("TheFirstDayIsSelected", {"KWOMonthView.SelDaysAdd", "KWOMonthView.SelDaysClear"},
              [](MonthViewStage& stage) {
                  Member([&] { stage.object->SelDaysClear(); });
                  Selecting(stage, 0, [&] { stage.object->SelDaysAdd({46360}); });
                  return Shown(Variant(stage.object->SelDay()));
              }),
        AloneScenario("ADayIsPressedInsteadOfAnother", "KWOMonthView.MouseDown", kFocus,
                      [](KWOMonthView& view) { view.MouseDown(kLeftButton, kDayX, kDayY); }),
        AloneScenario("AKeySelectsTheFocusInsteadOfAnother", "KWOMonthView.KeyDown", kSelected,
                      [](KWOMonthView& view) {
                          std::int16_t space = platform::Key::kSpace;
                          view.KeyDown(space);
                      }),
        Drawn("TheSelectionIsEmptied", {"KWOMonthView.SelDaysClear"},
              [](MonthViewStage& stage) {
                  Member([&] { stage.object->SelDaysClear(); });
                  return Shown(Variant(stage.object->SelDay()));
              }),
        Drawn("AKeyMovesTheFocus", {"KWOMonthView.KeyDown"},
              [](MonthViewStage& stage) { return Key(stage, platform::Key::kRight); }),
        Drawn("AKeyMovesTheFocusIntoAnotherMonth", {"KWOMonthView.KeyDown"},
              [](MonthViewStage& stage) { return Key(stage, platform::Key::kPageDown); }),
        Drawn("AKeySelectsTheFocus", {"KWOMonthView.KeyDown"},
              [](MonthViewStage& stage) { return Key(stage, platform::Key::kSpace); }),
    };
    // What the events of the host raise, the press does not.
    const auto held = std::ranges::find(scenarios, "AnArrowIsHeld", &Scenario::name);
    for (Rule& rule : held->rules)
        rule.withoutMemory = Either(rule.withoutMemory, SameAnswer());
    held->onAllocation = Either(held->onAllocation, SameAnswer());
    return scenarios;
}

}  // namespace kwo::fault_tests
