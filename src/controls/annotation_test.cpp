#include "controls/annotation.h"

#include <functional>
#include <memory>
#include <new>
#include <optional>

#include "controls/controls_fixture.h"
#include "controls/month_view.h"
#include "controls/pic_btn.h"
#include "controls/splitter_v.h"
#include "platform/keyboard.h"
#include "platform/simulated/calendar.h"

namespace kwo::controls {
namespace {

using platform::simulated::Faults;

/// A desktop with the annotation service. What readers are told is looked at by `Told`.
class Voices : public ControlsTest {
protected:
    static constexpr std::int32_t kOtherWindow = 600;

    Voices() {
        desktop.accessibility.Install();
        for (const std::int32_t window : {kWindow, kOtherWindow}) {
            desktop.windows.windows[window] = {u"Box"};
            desktop.drawing.clientAreas[window] = {0, 0, 100, 40};
        }
        form->SetMethod(u"OnButtonClick", [this](std::span<Variant> given) -> Variant {
            if (onClick) onClick(given);
            return platform::Empty{};
        });
    }
    /// The calls since the last time.
    Lines Told() { return desktop.accessibility.TakeCalls(); }
    const auto& Read() const { return desktop.accessibility.annotations; }

    /// A message file with one text.
    void InstallText(std::int32_t number, const Text& text) {
        desktop.components.Install(u"KWOInit.KWOInitialize", [this, number, text] {
            const auto companion = desktop.MakeObject();
            companion->SetMethod(u"KWO_MsgTableSize",
                                 [number](std::span<Variant> given) -> Variant {
                                     given[2] = number;
                                     given[3] = number;
                                     return true;
                                 },
                                 {u"ProgramName", u"MsgFilePath", u"IdxArrayStart", u"IdxArrayEnd", u"TextArraySize"});
            companion->SetMethod(u"KWO_MsgTableLoad",
                                 [number, text](std::span<Variant> given) -> Variant {
                                     const auto texts = std::make_shared<platform::TextArray>();
                                     texts->lowerBound = number;
                                     texts->items = {text};
                                     given[2] = platform::ForeignRef(texts);
                                     return platform::Empty{};
                                 },
                                 {u"Language", u"IdxArray", u"TextArray"});
            return HostObjectRef(companion);
        });
    }

    std::function<void(std::span<Variant>)> onClick;
};

class SpokenButton : public Voices {
protected:
    SpokenButton() { button.emplace(component); }
    void Create(TextView caption = u"&Save") {
        button->Create(box, caption);
        Told();
    }
    std::string Read(platform::Accessibility::Property property) const {
        return Voices::Read().at(kWindow).at(property);
    }
    std::optional<KWOPicBtn> button;
};

using Property = platform::Accessibility::Property;

TEST_F(SpokenButton, CreateTellsRoleNameKeyActionAndState) {
    button->Create(box, u"&Save");
    EXPECT_EQ(Told(), (Lines{"Begin 500 Role 43", "Set 500 Name \"Save\"", "Set 500 KeyboardShortcut \"Alt+S\"",
                             "Set 500 DefaultAction \"Press\"", "Set 500 State 0", "Notify 500 0x800c",
                             "Notify 500 0x8012", "Notify 500 0x8011", "Notify 500 0x800a"}));
}

TEST_F(SpokenButton, TheNameIsTheCaptionWithoutItsMarks) {
    Create();
    const std::pair<TextView, const char*> rows[] = {{u"Cut && &Paste", "\"Cut & Paste\""},
                                                     {u"Save&", "\"Save\""},
                                                     {u"&", "\"\""},
                                                     {u"a&&&b", "\"a&b\""},
                                                     {u"", "\"\""}};
    for (const auto& [caption, name] : rows) {
        button->SetCaption(caption);
        EXPECT_EQ(Read(Property::Name), name);
    }
}

TEST_F(SpokenButton, ANewCaptionIsToldAtOnceAndOnce) {
    Create();
    button->SetCaption(u"Save &all");
    EXPECT_EQ(Told(), (Lines{"Set 500 Name \"Save all\"", "Set 500 KeyboardShortcut \"Alt+A\"", "Notify 500 0x800c",
                             "Notify 500 0x8012"}));
    button->SetCaption(u"Save &all");
    button->LostFocus();
    button->Resize();
    EXPECT_EQ(Told(), Lines{});
    button->SetCaption(u"Save all");
    EXPECT_EQ(Told(), (Lines{"Set 500 KeyboardShortcut \"\"", "Notify 500 0x8012"}));
}

// Alt and the key are compared with the code of the character, which is that of the arrow up for "&".
TEST_F(SpokenButton, OnlyLettersAndDigitsAreKeys) {
    Create();
    const std::pair<TextView, const char*> rows[] = {{u"&0", "\"Alt+0\""}, {u"&9", "\"Alt+9\""}, {u"&z", "\"Alt+Z\""},
                                                     {u"&a", "\"Alt+A\""}, {u"&/", "\"\""},      {u"&[", "\"\""},
                                                     {u"&:", "\"\""},      {u"&@", "\"\""},      {u"&&x", "\"\""},
                                                     {u"  &Go", "\"\""},   {u"&ä", "\"\""}};
    for (const auto& [caption, key] : rows) {
        button->SetCaption(caption);
        EXPECT_EQ(Read(Property::KeyboardShortcut), key) << platform::simulated::Shown(caption);
    }
}

TEST_F(SpokenButton, APressAndARelease) {
    Create();
    button->MouseDown(1, 750, 300);
    EXPECT_EQ(Told(), (Lines{"Set 500 State 8", "Notify 500 0x800a"}));
    button->MouseMove(760, 300);
    EXPECT_EQ(Told(), Lines{});
    button->MouseMove(-300, 300);
    EXPECT_EQ(Told(), (Lines{"Set 500 State 0", "Notify 500 0x800a"}));
    button->MouseMove(750, 300);
    EXPECT_EQ(Told(), (Lines{"Set 500 State 8", "Notify 500 0x800a"}));
    button->MouseUp(750, 300);
    EXPECT_EQ(Told(), (Lines{"Set 500 State 0", "Notify 500 0x800a"}));
    button->MouseDown(2, 750, 300);
    EXPECT_EQ(Told(), Lines{});
}

TEST_F(SpokenButton, TheFocusComesAndGoes) {
    Create();
    button->GotFocus();
    EXPECT_EQ(Told(), (Lines{"Set 500 State 4", "Notify 500 0x800a"}));
    button->MouseDown(1, 750, 300);
    EXPECT_EQ(Told(), (Lines{"Set 500 State 12", "Notify 500 0x800a"}));
    button->Resize();
    EXPECT_EQ(Told(), (Lines{"Set 500 State 4", "Notify 500 0x800a"})) << "drawn raised, and still with the focus";
    button->MouseDown(1, 750, 300);
    Told();
    button->LostFocus();
    EXPECT_EQ(Told(), (Lines{"Set 500 State 0", "Notify 500 0x800a"})) << "both at once";
}

TEST_F(SpokenButton, TheFocusIsToldEvenIfTheHostRefusesToDraw) {
    Create();
    box->FailMember(u"hDC", Refusal());
    EXPECT_EQ(Raised([&] { button->GotFocus(); }).number, 380);
    EXPECT_EQ(Read(Property::State), "4");
    EXPECT_EQ(Raised([&] { button->LostFocus(); }).number, 380);
    EXPECT_EQ(Read(Property::State), "0");
}

TEST_F(SpokenButton, AnotherCreateBeginsAgainAndKeepsTheFocusOfTheWindow) {
    Create();
    button->GotFocus();
    Told();
    button->Create(box, u"&Save");
    EXPECT_EQ(Told().front(), "End 500");
    EXPECT_EQ(Read(Property::State), "4");
    button->Create(MakeBox(88, kOtherWindow), u"&Save");
    EXPECT_EQ(Voices::Read().size(), 1u);
    EXPECT_EQ(Voices::Read().at(kOtherWindow).at(Property::State), "0");
}

TEST_F(SpokenButton, WhatIsNoPictureBoxLeavesTheAnnotation) {
    Create();
    button->Create(desktop.MakeObject(u"Label"), u"x");
    EXPECT_EQ(Told(), Lines{});
}

TEST_F(SpokenButton, ACreateThatFailsTellsNothingMore) {
    Create();
    box->FailMember(u"Parent", Refusal());
    EXPECT_EQ(Raised([&] { button->Create(box, u"&Save"); }).number, 380);
    EXPECT_EQ(Told(), (Lines{"End 500"}));
}

TEST_F(SpokenButton, TheAnnotationGoesWithTheObject) {
    Create();
    button.reset();
    EXPECT_EQ(Told(), (Lines{"End 500"}));
    EXPECT_TRUE(component.annotatedWindows.empty());
}

TEST_F(SpokenButton, AWindowIsItsLastOwners) {
    Create();
    KWOPicBtn other(component);
    other.Create(box, u"&Other");
    EXPECT_EQ(Told().front(), "End 500");
    button->SetCaption(u"&Mine");
    button->GotFocus();
    button->Resize();
    button.reset();
    EXPECT_EQ(Told(), Lines{});
    EXPECT_EQ(Read(Property::Name), "\"Other\"");
}

TEST_F(SpokenButton, AResizeFollowsTheBoxToANewWindow) {
    Create();
    box->SetProperty(u"hWnd", kOtherWindow);
    button->Resize();
    EXPECT_EQ(Told().front(), "End 500");
    EXPECT_EQ(Voices::Read().at(kOtherWindow).at(Property::Name), "\"Save\"");
}

TEST_F(SpokenButton, AWindowThatIsGoneIsToldOfOnlyOnceMore) {
    Create();
    desktop.windows.windows.erase(kWindow);
    button->GotFocus();
    EXPECT_EQ(Told(), (Lines{"Set 500 State 4", "End 500"}));
    button->LostFocus();
    button->SetCaption(u"x");
    button->Resize();
    EXPECT_EQ(Told(), Lines{});
    button->Create(box, u"&Save");
    EXPECT_EQ(Told(), (Lines{"Begin 500 Role 43"})) << "a new Create asks again";
}

TEST_F(SpokenButton, TheBoxOfAClickIsAnnotated) {
    Create();
    const auto other = MakeBox(88, kOtherWindow);
    onClick = [&](std::span<Variant> given) { given[0] = HostObjectRef(other); };
    button->MouseDown(1, 750, 300);
    button->MouseUp(750, 300);
    EXPECT_EQ(Voices::Read().size(), 1u);
    EXPECT_EQ(Voices::Read().at(kOtherWindow).at(Property::Name), "\"Save\"");
    // The same box is asked nothing.
    other->logsReads = true;
    desktop.log.Clear();
    button->MouseDown(1, 750, 300);
    button->MouseUp(750, 300);
    EXPECT_EQ(desktop.log.Starting("Get box.hWnd"), Lines{});
}

TEST_F(SpokenButton, ABoxOfAClickWithoutAWindowIsNotAnnotated) {
    Create();
    const auto other = MakeBox(88, kOtherWindow);
    other->FailMember(u"hWnd", Refusal());
    onClick = [&](std::span<Variant> given) { given[0] = HostObjectRef(other); };
    button->MouseDown(1, 750, 300);
    button->MouseUp(750, 300);
    EXPECT_TRUE(Voices::Read().empty());
    onClick = [&](std::span<Variant> given) { given[0] = HostObjectRef(); };
    button->MouseDown(1, 750, 300);
    button->MouseUp(750, 300);
    EXPECT_TRUE(Voices::Read().empty());
    EXPECT_EQ(Raised([&] { button->LostFocus(); }).number, 91);
}

// Whenever the host is asked something, it may call Create with another box.
TEST_F(SpokenButton, TheAnnotationStaysWithTheBoxThatTheButtonHas) {
    const auto other = MakeBox(88, kOtherWindow);
    const auto asked = MakeBox(77, kWindow);
    int uses = 0;
    int intrusion = 0;
    asked->whenUsed = [&] {
        if (++uses == intrusion) button->Create(other, u"&Other");
    };
    const auto expectMatch = [&] {
        desktop.log.Clear();
        uses = intrusion;
        button->LostFocus();
        const bool isOther = !desktop.log.Starting("DrawEdge 88").empty();
        ASSERT_EQ(Voices::Read().size(), 1u) << intrusion;
        EXPECT_EQ(Voices::Read().begin()->first, isOther ? kOtherWindow : kWindow) << intrusion;
    };
    for (intrusion = 1;; ++intrusion) {
        uses = 0;
        button->Create(asked, u"&Save");
        const int all = uses;
        expectMatch();
        if (all < intrusion) break;
        ASSERT_LT(intrusion, 50);
    }
    EXPECT_GT(intrusion, 5);

    onClick = [&](std::span<Variant> given) { given[0] = HostObjectRef(asked); };
    for (intrusion = 1; intrusion < 5; ++intrusion) {
        button->Create(box, u"&Save");
        button->MouseDown(1, 750, 300);
        uses = 0;
        button->MouseUp(750, 300);
        expectMatch();
    }
}

TEST_F(SpokenButton, AReaderMayCallTheHostAndTheHostTheButton) {
    Create();
    const auto other = MakeBox(88, kOtherWindow);
    desktop.accessibility.onNotify = [&](Handle, std::uint32_t) {
        desktop.accessibility.onNotify = nullptr;
        button->Create(other, u"&Other");
        Told();
    };
    button->SetCaption(u"&New");
    EXPECT_EQ(Told(), Lines{}) << "the rest would be about a window that it left";
    EXPECT_EQ(Voices::Read().size(), 1u);
    EXPECT_EQ(Voices::Read().at(kOtherWindow).at(Property::Name), "\"Other\"");
}

TEST_F(SpokenButton, TheActionIsInTheUsersLanguage) {
    InstallText(1931, u"Drücken");
    button->Create(box, u"&Save");
    EXPECT_EQ(Read(Property::DefaultAction), "\"Drücken\"");
}

TEST_F(SpokenButton, WithoutAServiceNothingIsAskedTwiceAndNothingIsDifferent) {
    desktop.FailCall("CoCreateInstance", 1, -2147221164);
    for (int times = 0; times < 3; ++times) {
        button->Create(box, u"&Save");
        button->GotFocus();
        button->SetCaption(u"&Other");
        button->MouseDown(1, 750, 300);
    }
    EXPECT_EQ(Told(), Lines{});
    EXPECT_EQ(desktop.faults.Calls("CoCreateInstance"), 1) << "nor are texts loaded";
}

TEST_F(SpokenButton, AServiceThatRefusesIsGivenBack) {
    desktop.FailCall("SetHwndPropStr", 2, -2147024809);
    button->Create(box, u"&Save");
    EXPECT_EQ(Told(),
              (Lines{"Begin 500 Role 43", "Set 500 Name \"Save\"", "Set 500 KeyboardShortcut \"Alt+S\"", "End 500"}));
    desktop.FailCall("SetHwndProp", 2, -2147024809);
    button->Create(box, u"&Save");
    EXPECT_EQ(Told().back(), "End 500");
    EXPECT_TRUE(component.annotatedWindows.empty());
}

TEST_F(SpokenButton, WithoutMemoryTheButtonWorksOn) {
    desktop.FailCall("CoCreateInstance", 1, Faults::kNoMemory);
    EXPECT_NO_THROW(button->Create(box, u"&Save"));
    EXPECT_TRUE(Voices::Read().empty());
    desktop.FailCall("SetHwndPropStr", 1, Faults::kNoMemory);
    EXPECT_NO_THROW(button->Create(box, u"&Save"));
    EXPECT_TRUE(Voices::Read().empty());
    button.emplace(component);  // which lets the texts be loaded again
    desktop.FailCall("CoCreateInstance", 2, Faults::kNoMemory);
    EXPECT_NO_THROW(button->Create(box, u"&Save")) << "the texts";
    EXPECT_EQ(Voices::Read().size(), 1u);
    EXPECT_FALSE(Voices::Read().at(kWindow).contains(Property::DefaultAction));
}

TEST_F(SpokenButton, WithoutAWindowNothingIsTold) {
    desktop.windows.windows.clear();
    button->Create(box, u"&Save");
    EXPECT_EQ(Told(), (Lines{"Begin 500 Role 43"}));
    box->SetProperty(u"hWnd", std::int32_t{0});
    button->Create(box, u"&Save");
    EXPECT_EQ(Told(), Lines{});
}

class SpokenCalendar : public Voices {
protected:
    SpokenCalendar() {
        form->SetMethod(u"OnChangeMonth", [this](std::span<Variant> given) -> Variant {
            given.back() = refuses;
            return platform::Empty{};
        });
        form->SetMethod(u"OnChangeDate", [this](std::span<Variant> given) -> Variant {
            given.back() = refuses;
            return platform::Empty{};
        });
        view.emplace(component);
    }
    static Date On(int year, unsigned month, unsigned day) {
        return {platform::simulated::DayNumber(year, month, day).value()};
    }
    bool Create(KWOMonthView::CreateOptions options = {.canMultiSelect = true, .notifyOnChange = true}) {
        Date focus = On(2026, 11, 21);
        return view->Create(box, focus, options);
    }
    void Ready() {
        ASSERT_TRUE(Create());
        Told();
    }
    void Key(std::int16_t code) { view->KeyDown(code); }
    std::string Read(Property property) const { return Voices::Read().at(kWindow).at(property); }

    std::optional<KWOMonthView> view;
    bool refuses = false;
};

TEST_F(SpokenCalendar, CreateTellsMonthDayAndSelection) {
    EXPECT_TRUE(Create());
    EXPECT_EQ(Told(),
              (Lines{"Begin 500 Role 24", "Set 500 Name \"November, 2026\"",
                     "Set 500 Value \"Saturday, November 21, 2026\"", "Set 500 Description \"Selected days: 0\"",
                     "Notify 500 0x800c", "Notify 500 0x800e", "Notify 500 0x800d"}));
}

TEST_F(SpokenCalendar, TheWindowIsAskedForOnceAfterTheDrawing) {
    box->logsReads = true;
    EXPECT_TRUE(Create());
    EXPECT_EQ(desktop.log.Starting("Get box.").back(), "Get box.hWnd");
    EXPECT_EQ(desktop.log.Starting("Get box.hWnd").size(), 1u);
    view->Resize();
    Key(platform::Key::kRight);
    EXPECT_EQ(desktop.log.Starting("Get box.hWnd").size(), 1u);
}

TEST_F(SpokenCalendar, AKeyTellsTheDayItMovesTo) {
    Ready();
    Key(platform::Key::kRight);
    EXPECT_EQ(Told(), (Lines{"Set 500 Value \"Sunday, November 22, 2026\"", "Notify 500 0x800e"}));
    Key(platform::Key::kPageDown);
    EXPECT_EQ(Told(), (Lines{"Set 500 Name \"December, 2026\"", "Set 500 Value \"Tuesday, December 22, 2026\"",
                             "Notify 500 0x800c", "Notify 500 0x800e"}));
    refuses = true;
    Key(platform::Key::kPageDown);
    view->Resize();
    EXPECT_EQ(Told(), Lines{}) << "drawing again says nothing";
}

TEST_F(SpokenCalendar, ASelectionIsTold) {
    Ready();
    Key(platform::Key::kSpace);
    EXPECT_EQ(Told(), (Lines{"Set 500 Value \"Saturday, November 21, 2026, selected\"",
                             "Set 500 Description \"Selected days: 1\"", "Notify 500 0x800e", "Notify 500 0x800d"}));
    view->SelDaysAdd(On(2026, 11, 5));
    EXPECT_EQ(Told(), (Lines{"Set 500 Description \"Selected days: 2\"", "Notify 500 0x800d"}));
    view->SelDaysRemove(On(2026, 11, 21));
    EXPECT_EQ(Told(), (Lines{"Set 500 Value \"Saturday, November 21, 2026\"",
                             "Set 500 Description \"Selected days: 1\"", "Notify 500 0x800e", "Notify 500 0x800d"}));
    view->SelDaysClear();
    EXPECT_EQ(Told(), (Lines{"Set 500 Description \"Selected days: 0\"", "Notify 500 0x800d"}));
    refuses = true;
    Key(platform::Key::kSpace);
    EXPECT_EQ(Told(), Lines{});
}

TEST_F(SpokenCalendar, TheDayOfAClickIsTold) {
    Ready();
    view->MouseDown(1, 13.0f * 15, 65.0f * 15);  // Sunday, the first
    EXPECT_EQ(Told(), (Lines{"Set 500 Value \"Sunday, November 1, 2026, selected\"",
                             "Set 500 Description \"Selected days: 1\"", "Notify 500 0x800e", "Notify 500 0x800d"}));
}

TEST_F(SpokenCalendar, LimitsAreToldAsMonths) {
    Ready();
    view->SetMinDate(On(2026, 10, 5));
    EXPECT_EQ(Told(),
              (Lines{"Set 500 Description \"Selected days: 0. First month: October, 2026\"", "Notify 500 0x800d"}));
    view->SetMaxDate(On(2027, 3, 1));
    EXPECT_EQ(Read(Property::Description), "\"Selected days: 0. First month: October, 2026. Last month: March, 2027\"");
    view->SetMinDate({});
    EXPECT_EQ(Read(Property::Description), "\"Selected days: 0. Last month: March, 2027\"");
}

// The picture then shows another month than the properties, see docs/intended.md.
TEST_F(SpokenCalendar, AfterARefusedMonthTheNameIsThatOfThePicture) {
    Ready();
    refuses = true;
    view->ShowMonth(3, 2027);
    EXPECT_EQ(Told(), Lines{});
    view->SelDaysAdd(On(2026, 11, 5));
    EXPECT_EQ(Read(Property::Name), "\"November, 2026\"");
    EXPECT_EQ(Read(Property::Value), "\"Monday, March 1, 2027\"") << "where the keys go on";
}

TEST_F(SpokenCalendar, ADateThatCannotBeShownIsNotTold) {
    Ready();
    desktop.FailCall("VarFormat", 2, 6);  // the first is the caption's
    Key(platform::Key::kRight);
    EXPECT_EQ(Read(Property::Value), "\"Saturday, November 21, 2026\"");
    Told();
    Key(platform::Key::kRight);
    EXPECT_EQ(Told(), (Lines{"Set 500 Value \"Monday, November 23, 2026\"", "Notify 500 0x800e"}));
}

TEST_F(SpokenCalendar, TheAnnotationEndsWithACreateThatFails) {
    for (const TextView member : {u"Parent", u"Refresh"}) {
        Ready();
        box->FailMember(member, Refusal());
        EXPECT_FALSE(Create());
        EXPECT_EQ(Told().back(), "End 500");
        EXPECT_TRUE(Voices::Read().empty());
        view->SelDaysClear();
        EXPECT_EQ(Told(), Lines{});
        box->MendMember(member);
    }
    Ready();
    desktop.FailCall("VariantChangeType", 1, Faults::kNoMemory);
    EXPECT_THROW(Create(), std::bad_alloc);
    EXPECT_TRUE(Voices::Read().empty());
    Ready();
    view.reset();
    EXPECT_EQ(Told(), (Lines{"End 500"}));
}

TEST_F(SpokenCalendar, ABoxThatDoesNotTellItsWindowIsNoError) {
    box->FailMember(u"hWnd", Refusal());
    EXPECT_TRUE(Create());
    EXPECT_EQ(component.error.Saved().number, 0);
    EXPECT_EQ(Told(), Lines{});
    box->MendMember(u"hWnd");
    box->SetProperty(u"hWnd", Text(u"none"));
    EXPECT_TRUE(Create());
    EXPECT_EQ(Told(), Lines{});
}

// Whenever the host is asked something, it may call Create with another box, or a Create that fails.
TEST_F(SpokenCalendar, TheAnnotationIsThatOfTheInnerCreate) {
    const auto other = MakeBox(88, kOtherWindow);
    const auto broken = MakeBox(99, 700);
    desktop.windows.windows[700] = {u"Broken"};
    broken->FailMember(u"Refresh", Refusal());
    for (const auto& inner : {other, broken}) {
        int uses = 0;
        int intrusion = 0;
        box->whenUsed = [&] {
            if (++uses != intrusion) return;
            Date focus = On(2027, 3, 5);
            view->Create(inner, focus, {});
        };
        bool isBeyond = false;
        for (intrusion = 1; !isBeyond; ++intrusion) {
            ASSERT_LT(intrusion, 1'000);
            uses = 0;
            Create();
            isBeyond = uses < intrusion;
            uses = intrusion;
            desktop.log.Clear();
            view->Resize();
            std::vector<Handle> expected;
            for (const auto& [context, window] : {std::pair(" 77 ", kWindow), {" 88 ", kOtherWindow}, {" 99 ", 700}}) {
                if (!desktop.log.Starting("DrawEdge" + std::string(context)).empty()) expected.push_back(window);
            }
            std::vector<Handle> read;
            for (const auto& [window, properties] : Voices::Read())
                read.push_back(window);
            ASSERT_EQ(read, expected) << intrusion;
        }
        EXPECT_GT(intrusion, 100);
        box->whenUsed = nullptr;
    }
}

TEST_F(SpokenCalendar, ACalendarInPlaceOfAButtonTakesItsPropertiesAway) {
    KWOPicBtn button(component);
    button.Create(box, u"&Save");
    Ready();
    EXPECT_FALSE(Voices::Read().at(kWindow).contains(Property::KeyboardShortcut));
    EXPECT_FALSE(Voices::Read().at(kWindow).contains(Property::State)) << "the window's own state counts";
    EXPECT_EQ(Read(Property::Role), "24");
}

class SpokenSplitter : public Voices {
protected:
    SpokenSplitter() {
        form->SetProperty(u"hWnd", std::int32_t{900});
        form->SetProperty(u"ScaleMode", std::int16_t{1});
        form->SetProperty(u"ScaleWidth", 1130.0f);
        form->SetProperty(u"ScaleHeight", 1000.0f);
        for (const TextView name : {u"ScaleX", u"ScaleY"})
            form->SetMethod(name, [](std::span<Variant>) -> Variant { return 15.0f; });
        bar->SetProperty(u"hWnd", kWindow);
        splitter.emplace(component);
    }
    std::shared_ptr<SimulatedObject> MakePane(std::string label) {
        auto pane = desktop.MakeObject(u"PictureBox", std::move(label));
        pane->SetProperty(u"Parent", HostObjectRef(form));
        pane->SetProperty(u"Container", HostObjectRef(form));
        for (const TextView place : {u"Left", u"Top", u"Width", u"Height"})
            pane->SetProperty(place, 600.0f);
        pane->SetMethod(u"Move", [raw = pane.get()](std::span<Variant> given) -> Variant {
            raw->SetProperty(u"Left", given[0]);
            raw->SetProperty(u"Width", given[2]);
            return platform::Empty{};
        });
        return pane;
    }
    bool Create() {
        // The bar is 60 wide and goes from 70 to 1000.
        return splitter->Create(left, right, bar, {.marginLeft = 70.0f, .marginRight = 0.0f});
    }

    std::shared_ptr<SimulatedObject> left = MakePane("left");
    std::shared_ptr<SimulatedObject> right = MakePane("right");
    std::shared_ptr<SimulatedObject> bar = MakePane("bar");
    std::optional<KWOSplitterV> splitter;
};

TEST_F(SpokenSplitter, ThePlaceIsToldInPercentOfTheWay) {
    bar->SetProperty(u"Left", 535.0f);
    EXPECT_TRUE(Create());
    EXPECT_EQ(Told(), (Lines{"Begin 500 Role 21", "Set 500 Value \"50%\"", "Notify 500 0x800e"}));
    splitter->Resize();
    splitter->MouseDown(1, 0);
    splitter->MouseMove(5'000);
    EXPECT_EQ(Told(), Lines{}) << "the bar itself has not moved";
    splitter->MouseUp(5'000);
    EXPECT_EQ(Told(), (Lines{"Set 500 Value \"100%\"", "Notify 500 0x800e"}));
    splitter->MouseDown(1, 0);
    splitter->MouseUp(-5'000);
    EXPECT_EQ(Told(), (Lines{"Set 500 Value \"0%\"", "Notify 500 0x800e"}));
    splitter->MouseDown(1, 0);
    splitter->MouseUp(311);
    EXPECT_EQ(Told(), (Lines{"Set 500 Value \"33%\"", "Notify 500 0x800e"}));
    splitter.reset();
    EXPECT_EQ(Told(), (Lines{"End 500"}));
}

TEST_F(SpokenSplitter, APlaceBeyondTheLimitsIsAtTheLimit) {
    EXPECT_TRUE(Create());
    for (const auto& [place, told] : {std::pair(5.0f, "\"0%\""), std::pair(1'060.0f, "\"100%\"")}) {
        bar->SetProperty(u"Left", place);
        splitter->Resize();
        EXPECT_EQ(Read().at(kWindow).at(Property::Value), told);
    }
    // No way at all: the container has no room but for the margins and the bar.
    form->SetProperty(u"ScaleWidth", 200.0f);
    bar->SetProperty(u"Left", 70.0f);
    splitter->Resize();
    EXPECT_EQ(Read().at(kWindow).at(Property::Value), "\"0%\"");
}

TEST_F(SpokenSplitter, ABarWithoutAWindowIsNoError) {
    bar->FailMember(u"hWnd", Refusal());
    EXPECT_TRUE(Create());
    EXPECT_EQ(Told(), Lines{});
    EXPECT_EQ(component.error.Saved().number, 0);
}

TEST_F(SpokenSplitter, ACreateThatFailsEndsTheAnnotation) {
    EXPECT_TRUE(Create());
    bar->FailMember(u"Container", Refusal());
    EXPECT_FALSE(Create());
    EXPECT_EQ(Told().back(), "End 500");
    bar->MendMember(u"Container");
    EXPECT_TRUE(Create());
    left->FailMember(u"Container", Refusal());
    Told();
    EXPECT_FALSE(Create());
    EXPECT_EQ(Told(), (Lines{"End 500"}));
}

TEST_F(SpokenSplitter, TheAnnotationIsThatOfTheInnerCreate) {
    const auto other = MakePane("other");
    other->SetProperty(u"hWnd", kOtherWindow);
    const auto broken = MakePane("broken");
    broken->FailMember(u"Container", Refusal());
    for (const auto& inner : {other, broken}) {
        int uses = 0;
        int intrusion = 0;
        bar->whenUsed = [&] {
            if (++uses == intrusion) splitter->Create(left, right, inner, {});
        };
        bool isBeyond = false;
        for (intrusion = 1; !isBeyond; ++intrusion) {
            ASSERT_LT(intrusion, 100);
            uses = 0;
            Create();
            isBeyond = uses < intrusion;
            uses = intrusion;
            desktop.log.Clear();
            try {
                splitter->MouseDown(1, 0);
                splitter->MouseUp(0);
            } catch (const ComponentError&) {
                // The inner Create has let go of the controls.
            }
            const bool isInner = !desktop.log.Starting("Call other.Move").empty();
            const bool isThere = isInner || !desktop.log.Starting("Call bar.Move").empty();
            ASSERT_EQ(Read().size(), isThere ? 1u : 0u) << intrusion;
            if (isThere) {
                EXPECT_EQ(Read().begin()->first, isInner ? kOtherWindow : kWindow) << intrusion;
            }
        }
        bar->whenUsed = nullptr;
    }
}

}  // namespace
}  // namespace kwo::controls
