#include "controls/pic_btn.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <optional>

#include "controls/controls_fixture.h"
#include "platform/component_error.h"

namespace kwo::controls {
namespace {

// A box of 100 by 40 pixels at 15 twips each.
const Lines kRaised = {"Call box.Cls", "DrawEdge 77 (0,0,100,40) 5 0xf", "DrawText 77 \"&Save\" (2,2,98,38) 0x8035",
                       "Call box.Refresh"};
const Lines kRaisedFramed = {"Call box.Cls", "DrawEdge 77 (0,0,100,40) 5 0xf", "FrameRect 77 (0,0,100,40) 1004",
                             "DrawText 77 \"&Save\" (2,2,98,38) 0x8035", "Call box.Refresh"};
const Lines kPressed = {"Call box.Cls", "DrawEdge 77 (0,0,100,40) 10 0xf", "FrameRect 77 (0,0,100,40) 1004",
                        "DrawText 77 \"&Save\" (3,3,99,39) 0x8035", "Call box.Refresh"};

Lines operator+(Lines first, const Lines& second) {
    first.insert(first.end(), second.begin(), second.end());
    return first;
}

class Button : public ControlsTest {
protected:
    Button() {
        desktop.drawing.clientAreas[kWindow] = {0, 0, 100, 40};
        form->SetMethod(u"OnButtonClick", [this](std::span<Variant> given) -> Variant {
            ++clicks;
            if (onClick) onClick(given);
            return platform::Empty{};
        });
        form->SetProperty(u"ActiveControl", HostObjectRef(box));
        button.emplace(component);
    }
    void Create(TextView caption = u"&Save") {
        button->Create(box, caption);
        desktop.log.Clear();
    }
    Text KeyOf(TextView caption) {
        Create(caption);
        for (std::int32_t code = 1; code < 0x10000; ++code) {
            auto key = static_cast<std::int16_t>(code);
            std::int16_t shift = 4;
            const int before = clicks;
            if (button->Form_KeyDown(key, shift)) {
                EXPECT_EQ(clicks, before + 1);
                return Text(1, static_cast<char16_t>(code));
            }
        }
        return {};
    }
    Lines Drawn() {
        Lines lines = TakeLog();
        std::erase_if(lines, [](const std::string& line) {
            return line.starts_with("CreateObject") || line.starts_with("Wait") || line.starts_with("Get");
        });
        return lines;
    }

    std::optional<KWOPicBtn> button;
    int clicks = 0;
    std::function<void(std::span<Variant>)> onClick;
};

TEST_F(Button, CreationSetsTheProgramName) {
    EXPECT_EQ(component.ProgramName(), u"KWOUtil");
}

TEST_F(Button, CreateDrawsARaisedButtonWithoutAFrame) {
    button->Create(box, u"&Save");
    EXPECT_EQ(Drawn(), kRaised);
    EXPECT_EQ(button->Caption(), u"&Save");
}

TEST_F(Button, WhatIsNoPictureBoxIsIgnored) {
    button->Create(desktop.MakeObject(u"Label"), u"&Save");
    button->Create(nullptr, u"&Save");
    EXPECT_EQ(Drawn(), Lines{});
    EXPECT_EQ(button->Caption(), u"");
    EXPECT_EQ(Raised([&] { button->LostFocus(); }).number, 91);
}

TEST_F(Button, TheContextIsReadBeforeEachCall) {
    Create();
    box->logsReads = true;
    button->LostFocus();
    EXPECT_EQ(TakeLog(), (Lines{"Call box.Cls", "Get box.hDC", "DrawEdge 77 (0,0,100,40) 5 0xf", "Get box.hDC",
                                "DrawText 77 \"&Save\" (2,2,98,38) 0x8035", "Call box.Refresh"}));
}

TEST_F(Button, ATextAreaMayBeEmptyOrInverted) {
    desktop.drawing.clientAreas[kWindow] = {0, 0, 4, 3};
    button->Create(box, u"x");
    EXPECT_EQ(Drawn()[2], "DrawText 77 \"x\" (2,2,2,1) 0x8035");
}

TEST_F(Button, AClientAreaAtTheEndOfTheNumbersOverflows) {
    desktop.drawing.clientAreas[kWindow] = {0, 0, INT32_MIN + 1, 3};
    const ComponentError error = Raised([&] { button->Create(box, u"x"); });
    EXPECT_EQ(error.number, 6);
    EXPECT_EQ(error.source, u"KWOPicBtn.Create");
}

TEST_F(Button, AlignmentsHaveTheirFlags) {
    const struct {
        std::int16_t let;
        std::int16_t get;
        const char* flags;
    } rows[] = {{3, 3, "0x8034"}, {4, 4, "0x8036"}, {2, 2, "0x8035"}, {0, 2, "0x8035"},
                {7, 2, "0x8035"}, {1, 2, "0x8035"}, {-1, 2, "0x8035"}};
    Create();
    for (const auto& row : rows) {
        button->SetTextAlignment(row.let);
        EXPECT_EQ(button->TextAlignment(), row.get) << row.let;
        EXPECT_EQ(Drawn(), Lines{}) << "no redraw";
        button->LostFocus();
        EXPECT_EQ(Drawn()[2], std::string("DrawText 77 \"&Save\" (2,2,98,38) ") + row.flags);
    }
}

TEST_F(Button, MultiLineIsTheWordBreak) {
    Create();
    EXPECT_TRUE(button->MultiLine());
    button->SetMultiLine(false);
    EXPECT_FALSE(button->MultiLine());
    button->LostFocus();
    EXPECT_EQ(Drawn()[2], "DrawText 77 \"&Save\" (2,2,98,38) 0x8025");
    button->SetMultiLine(true);
    button->LostFocus();
    EXPECT_EQ(Drawn()[2], "DrawText 77 \"&Save\" (2,2,98,38) 0x8035");
}

TEST_F(Button, AccessKeysFollowTheFirstMarker) {
    EXPECT_EQ(KeyOf(u"&Save"), u"S");
    EXPECT_EQ(KeyOf(u"&save"), u"S");
    EXPECT_EQ(KeyOf(u"Sa&ve &as"), u"V");
    EXPECT_EQ(KeyOf(u"Save&"), u"");
    EXPECT_EQ(KeyOf(u"Save"), u"");
    EXPECT_EQ(KeyOf(u""), u"");
    EXPECT_EQ(KeyOf(u"&"), u"");
    EXPECT_EQ(KeyOf(u"  Save&  "), u"");
    EXPECT_EQ(KeyOf(u"&&x"), u"&");
    EXPECT_EQ(KeyOf(u"&\u00E4"), u"\u00C4");
}

using AccessKeyIntended = Button;

TEST_F(AccessKeyIntended, LeadingBlanksShiftTheLetter) {
    EXPECT_EQ(KeyOf(u"  &Go"), u" ");
    EXPECT_EQ(KeyOf(u" &Go"), u"&");
}

TEST_F(Button, APressInsideSinksAndAReleaseClicks) {
    Create();
    button->MouseDown(1, 750, 300);
    EXPECT_EQ(Drawn(), kPressed);
    button->MouseUp(750, 300);
    EXPECT_EQ(Drawn(), (Lines{"Call box.Cls"} + kRaisedFramed + Lines{"Call form.OnButtonClick <PictureBox>"}));
    EXPECT_EQ(clicks, 1);
    button->MouseUp(750, 300);
    EXPECT_EQ(clicks, 1);
}

TEST_F(Button, OtherButtonsPressNothing) {
    Create();
    for (const std::int16_t other : std::initializer_list<std::int16_t>{0, 2, 3, 4, 5}) {
        button->MouseDown(other, 750, 300);
        EXPECT_EQ(Drawn(), Lines{}) << other;
        button->MouseUp(750, 300);
        EXPECT_EQ(Drawn(), (Lines{"Call box.Cls"} + kRaisedFramed)) << other;
    }
    EXPECT_EQ(clicks, 0);
}

TEST_F(Button, TheEdgesOfTheClientAreaCount) {
    Create();
    const auto presses = [&](float x, float y) {
        button->MouseDown(1, x, y);
        const bool drawn = !Drawn().empty();
        button->MouseUp(-1000, -1000);
        Drawn();
        return drawn;
    };
    EXPECT_TRUE(presses(0, 0));
    EXPECT_TRUE(presses(99 * 15, 39 * 15));
    EXPECT_FALSE(presses(100 * 15, 20 * 15));
    EXPECT_FALSE(presses(50 * 15, 40 * 15));
    EXPECT_FALSE(presses(-15, 15));
    EXPECT_FALSE(presses(15, -15));
    // Rounded twice, halves to even: -7.5 twips are -8, half a pixel nearly, and -8/15 rounds to -1.
    EXPECT_TRUE(presses(-7.4f, 0));
    EXPECT_FALSE(presses(-7.6f, 0));
    EXPECT_TRUE(presses(1492.4f, 0));   // 99.47
    EXPECT_TRUE(presses(1492.5f, 0));   // 1492, not 99.5 pixels
    EXPECT_FALSE(presses(1492.6f, 0));  // 1493 / 15 = 99.53
}

TEST_F(Button, LeavingRaisesAndComingBackSinks) {
    Create();
    button->MouseDown(1, 750, 300);
    Drawn();
    button->MouseMove(760, 310);
    EXPECT_EQ(Drawn(), Lines{});
    button->MouseMove(-300, 300);
    EXPECT_EQ(Drawn(), kRaisedFramed);
    button->MouseMove(-400, 300);
    EXPECT_EQ(Drawn(), Lines{});
    button->MouseUp(-400, 300);
    EXPECT_EQ(clicks, 0);
    Drawn();
    button->MouseDown(1, 750, 300);
    button->MouseMove(-300, 300);
    Drawn();
    button->MouseMove(750, 300);
    EXPECT_EQ(Drawn(), kPressed);
    button->MouseUp(750, 300);
    EXPECT_EQ(clicks, 1);
}

TEST_F(Button, AMovementWithoutAPressDrawsNothing) {
    Create();
    button->MouseMove(750, 300);
    EXPECT_EQ(Drawn(), Lines{});
}

TEST_F(Button, ADoubleClickPressesAgainAndTheNextMovementReleases) {
    Create();
    button->MouseDown(1, 750, 300);
    button->MouseUp(750, 300);
    Drawn();
    button->DblClick();
    EXPECT_EQ(Drawn(), kPressed);
    button->MouseMove(750, 300);
    EXPECT_EQ(clicks, 2);
    Drawn();
    button->MouseMove(750, 300);
    EXPECT_EQ(Drawn(), Lines{});
    EXPECT_EQ(clicks, 2);
}

TEST_F(Button, AMovementAfterARealReleaseReleasesOnceMoreWithoutAClick) {
    Create();
    button->MouseDown(1, 750, 300);
    button->MouseUp(750, 300);
    button->DblClick();
    button->MouseUp(750, 300);
    EXPECT_EQ(clicks, 2);
    Drawn();
    button->MouseMove(750, 300);
    EXPECT_EQ(Drawn(), (Lines{"Call box.Cls"} + kRaisedFramed));
    EXPECT_EQ(clicks, 2);
}

TEST_F(Button, ADoubleClickRepeatsItsLastButton) {
    Create();
    button->MouseDown(1, 750, 300);
    button->MouseUp(750, 300);
    button->MouseDown(2, 750, 300);
    button->MouseUp(750, 300);
    Drawn();
    button->DblClick();
    EXPECT_EQ(Drawn(), Lines{}) << "it was the right one";
    button->MouseMove(750, 300);
    EXPECT_EQ(Drawn(), (Lines{"Call box.Cls"} + kRaisedFramed));
    EXPECT_EQ(clicks, 1);
}

TEST_F(Button, AMovementDuringTheClickLeavesTheButtonRaised) {
    Create();
    onClick = [&](std::span<Variant>) {
        button->MouseMove(760, 310);
        button->MouseMove(-300, 300);
        button->MouseMove(750, 300);
    };
    button->MouseDown(1, 750, 300);
    Drawn();
    button->MouseUp(750, 300);
    EXPECT_EQ(Drawn(), (Lines{"Call box.Cls"} + kRaisedFramed + Lines{"Call form.OnButtonClick <PictureBox>"}));
    button->MouseMove(760, 310);
    EXPECT_EQ(Drawn(), Lines{});
}

TEST_F(Button, AMovementAfterAFailedClickFollowsThePointerAgain) {
    Create();
    form->FailMember(u"OnButtonClick", Refusal());
    button->MouseDown(1, 750, 300);
    EXPECT_EQ(Raised([&] { button->MouseUp(750, 300); }).number, 380);
    Drawn();
    button->MouseMove(750, 300);
    EXPECT_EQ(Drawn(), kPressed) << "the button is still down";
}

TEST_F(Button, APressDuringTheClickIsAPressOfItsOwn) {
    Create();
    onClick = [&](std::span<Variant>) {
        if (clicks > 1) return;
        Drawn();
        button->MouseDown(1, 750, 300);
        button->MouseMove(-300, 300);
        EXPECT_EQ(Drawn(), kPressed + kRaisedFramed);
        button->MouseMove(750, 300);
        button->MouseUp(750, 300);
    };
    button->MouseDown(1, 750, 300);
    button->MouseUp(750, 300);
    EXPECT_EQ(clicks, 2);
}

TEST_F(Button, AMovementDuringTheClickOfADoubleClickClicksNoMore) {
    Create();
    button->MouseDown(1, 750, 300);
    button->MouseUp(750, 300);
    onClick = [&](std::span<Variant>) {
        if (clicks < 10) button->MouseMove(750, 300);
    };
    button->DblClick();
    button->MouseMove(750, 300);
    EXPECT_EQ(clicks, 2);
}

TEST_F(Button, FocusAddsAndRemovesTheFrame) {
    Create();
    button->GotFocus();
    EXPECT_EQ(Drawn(), (Lines{"FrameRect 77 (0,0,100,40) 1004", "Call box.Refresh"}));
    button->LostFocus();
    EXPECT_EQ(Drawn(), kRaised);
}

TEST_F(Button, ResizeMeasuresAgain) {
    Create();
    desktop.drawing.clientAreas[kWindow] = {0, 0, 50, 20};
    button->Resize();
    EXPECT_EQ(Drawn(), (Lines{"Call box.Cls", "DrawEdge 77 (0,0,50,20) 5 0xf",
                              "DrawText 77 \"&Save\" (2,2,48,18) 0x8035", "Call box.Refresh"}));
    EXPECT_EQ(button->Caption(), u"&Save");
    KWOPicBtn fresh(component);
    EXPECT_NO_THROW(fresh.Resize());
}

TEST_F(Button, KeysClickOrMoveTheFocus) {
    const struct {
        std::int16_t code;
        std::int16_t after;
        int clicks;
        const char* keys;
    } rows[] = {{13, 0, 1, ""},
                {32, 32, 1, ""},
                {-1, -1, 1, ""},
                {37, 0, 0, "Keys +{TAB}"},
                {38, 0, 0, "Keys +{TAB}"},
                {39, 0, 0, "Keys {TAB}"},
                {40, 0, 0, "Keys {TAB}"},
                {65, 65, 0, ""},
                {0, 0, 0, ""},
                {9, 9, 0, ""}};
    Create();
    for (const auto& row : rows) {
        clicks = 0;
        std::int16_t code = row.code;
        button->KeyDown(code);
        EXPECT_EQ(code, row.after) << row.code;
        EXPECT_EQ(clicks, row.clicks) << row.code;
        EXPECT_EQ(desktop.log.Starting("Keys"), *row.keys ? Lines{row.keys} : Lines{}) << row.code;
        desktop.log.Clear();
    }
}

TEST_F(Button, AKeyClickShowsThePressForATenthOfASecond) {
    Create();
    const auto before = desktop.clock.Elapsed();
    std::int64_t sunkenUntil = 0;
    int ticks = 0;
    for (int at = 10; at < 100; at += 30)
        desktop.PostAt(at, [&] { ++ticks; });
    onClick = [&](std::span<Variant>) { sunkenUntil = desktop.clock.Elapsed().scaled - before.scaled; };
    std::int16_t code = 32;
    button->KeyDown(code);
    EXPECT_EQ(sunkenUntil, 100 * platform::Milliseconds::kScale);
    EXPECT_EQ(ticks, 3) << "messages are processed meanwhile";
    const Lines drawn = Drawn();
    EXPECT_TRUE(std::equal(kPressed.begin(), kPressed.end(), drawn.begin()));
}

TEST_F(Button, AHeldKeyStartsNoClickWhileOneRuns) {
    Create();
    int held = 0;
    for (int at = 0; at < 400; at += 30) {
        for (const std::int16_t code : std::initializer_list<std::int16_t>{13, 32, -1}) {
            desktop.PostAt(at, [&, code] {
                std::int16_t key = code;
                button->KeyDown(key);
                EXPECT_EQ(key, code == 13 ? 0 : code);
                ++held;
            });
        }
    }
    // A procedure that takes its time, with messages.
    onClick = [&](std::span<Variant>) { component.wait.KWO_Wait(300, true); };
    std::int16_t first = 32;
    button->KeyDown(first);
    EXPECT_EQ(held, 14 * 3);
    EXPECT_EQ(clicks, 1);
    EXPECT_EQ(desktop.clock.Elapsed(), platform::Milliseconds::Whole(400));
    onClick = nullptr;
    button->KeyDown(first);
    EXPECT_EQ(clicks, 2) << "the next press of a key clicks again";
}

TEST_F(Button, AKeyClicksAgainAfterAClickThatFailed) {
    Create();
    std::int16_t code = 32;
    form->FailMember(u"OnButtonClick", Refusal());
    EXPECT_EQ(Raised([&] { button->KeyDown(code); }).number, 380);
    form->MendMember(u"OnButtonClick");
    box->FailMember(u"Cls", Refusal());
    EXPECT_EQ(Raised([&] { button->KeyDown(code); }).number, 380);
    box->MendMember(u"Cls");
    button->KeyDown(code);
    EXPECT_EQ(clicks, 1);
}

TEST_F(Button, AKeyIsUsedUpBeforeItActs) {
    Create();
    std::int16_t code = 13;
    onClick = [&](std::span<Variant>) { EXPECT_EQ(code, 0); };
    button->KeyDown(code);
    EXPECT_EQ(clicks, 1);
    int moved = 0;
    desktop.keyboard.onTab = [&] {
        ++moved;
        EXPECT_EQ(code, 0);
    };
    for (const std::int16_t arrow : std::initializer_list<std::int16_t>{37, 38, 39, 40}) {
        code = arrow;
        button->KeyDown(code);
    }
    EXPECT_EQ(moved, 4);
}

class ButtonAccess : public Button {
protected:
    ButtonAccess() {
        other = desktop.MakeObject(u"TextBox", "other");
        other->SetProperty(u"hWnd", std::int32_t{501});
        form->SetProperty(u"ActiveControl", HostObjectRef(other));
        Create();
    }
    bool Press(std::int16_t& code, std::int16_t& shift) { return button->Form_KeyDown(code, shift); }
    std::shared_ptr<SimulatedObject> other;
};

TEST_F(ButtonAccess, AltWithTheLetterFocusesAndClicks) {
    std::int16_t code = 'S';
    std::int16_t shift = 4;
    EXPECT_TRUE(Press(code, shift));
    EXPECT_EQ(code, 0);
    EXPECT_EQ(shift, 0);
    EXPECT_EQ(clicks, 1);
    const Lines drawn = Drawn();
    EXPECT_EQ(drawn[0], "Call box.SetFocus") << "before the click";
    EXPECT_EQ(std::ranges::count(drawn, "Call box.SetFocus"), 1);
}

TEST_F(ButtonAccess, AHeldAccessKeyStartsNoClickWhileOneRuns) {
    int used = 0;
    const auto press = [&] {
        std::int16_t code = 'S';
        std::int16_t shift = 4;
        used += Press(code, shift) && code == 0 && shift == 0 ? 1 : 0;
    };
    for (int at = 10; at < 100; at += 30)
        desktop.PostAt(at, press);
    press();
    EXPECT_EQ(used, 4) << "the key is the button's in any case";
    EXPECT_EQ(clicks, 1);
}

TEST_F(ButtonAccess, TheFocusIsNotSetTwice) {
    form->SetProperty(u"ActiveControl", HostObjectRef(box));
    std::int16_t code = 'S';
    std::int16_t shift = 4;
    EXPECT_TRUE(Press(code, shift));
    EXPECT_EQ(clicks, 1);
    EXPECT_TRUE(desktop.log.Starting("Call box.SetFocus").empty());
}

TEST_F(ButtonAccess, OtherKeysAreLeftAlone) {
    const std::pair<std::int16_t, std::int16_t> rows[] = {{'S', 6}, {'S', 0}, {'S', 5}, {'T', 4}, {'s', 4}, {0, 4}};
    for (auto [code, shift] : rows) {
        const auto before = std::pair(code, shift);
        EXPECT_FALSE(Press(code, shift));
        EXPECT_EQ(std::pair(code, shift), before);
    }
    EXPECT_EQ(clicks, 0);
    button->SetCaption(u"Save");
    std::int16_t code = 'S';
    std::int16_t shift = 4;
    EXPECT_FALSE(Press(code, shift));
}

TEST_F(ButtonAccess, AFormWithoutAnActiveControlIsAnError) {
    form->SetProperty(u"ActiveControl", HostObjectRef());
    std::int16_t code = 'S';
    std::int16_t shift = 4;
    EXPECT_EQ(Raised([&] { Press(code, shift); }).number, 91);
}

TEST_F(ButtonAccess, TheSameWindowWithoutASignIsTheSame) {
    const auto active = desktop.MakeObject(u"PictureBox", "active");
    form->SetProperty(u"ActiveControl", HostObjectRef(active));
    active->SetProperty(u"hWnd", 4294967295.0);
    box->SetProperty(u"hWnd", std::int32_t{-1});
    std::int16_t code = 'S';
    std::int16_t shift = 4;
    EXPECT_TRUE(Press(code, shift));
    EXPECT_EQ(desktop.log.Starting("Call box.SetFocus").size(), 0u);
}

TEST_F(Button, AHandlerMayReplaceThePictureBox) {
    Create();
    desktop.drawing.clientAreas[600] = {0, 0, 10, 10};
    const auto otherBox = MakeBox(88, 600);
    onClick = [&](std::span<Variant> given) { given[0] = HostObjectRef(otherBox); };
    button->MouseDown(1, 750, 300);
    button->MouseUp(750, 300);
    Drawn();
    button->LostFocus();
    EXPECT_EQ(Drawn()[1], "DrawEdge 88 (0,0,100,40) 5 0xf");
}

TEST_F(Button, AHandlerThatPutsNoObjectThereIsAnError) {
    Create();
    onClick = [](std::span<Variant> given) { given[0] = Text(u"nothing"); };
    button->MouseDown(1, 750, 300);
    EXPECT_EQ(Raised([&] { button->MouseUp(750, 300); }).number, 424);
}

TEST_F(Button, AFailingNotificationTellsItsStepAndLeavesTheButtonDown) {
    Create();
    form->FailMember(u"OnButtonClick", Refusal(1234));
    button->MouseDown(1, 750, 300);
    const ComponentError error = Raised([&] { button->MouseUp(750, 300); });
    EXPECT_EQ(error.number, 1234);
    EXPECT_EQ(error.source, u"KWOPicBtn.MouseUp");
    EXPECT_EQ(error.description, u"Refused\r\nUndefined Message");
    form->MendMember(u"OnButtonClick");
    button->MouseUp(750, 300);
    EXPECT_EQ(clicks, 1);
}

TEST_F(Button, EveryStepOfAReleaseHasItsText) {
    desktop.components.Install(u"KWOInit.KWOInitialize", [this] {
        auto companion = desktop.MakeObject();
        companion->SetMethod(u"KWO_MsgTableSize",
                             [](std::span<Variant> given) -> Variant {
                                 given[2] = std::int32_t{1923};
                                 given[3] = std::int32_t{1928};
                                 given[4] = std::int32_t{100};
                                 return true;
                             },
                             {u"ProgramName", u"MsgFilePath", u"IdxArrayStart", u"IdxArrayEnd", u"TextArraySize"});
        companion->SetMethod(
            u"KWO_MsgTableLoad",
            [](std::span<Variant> given) -> Variant {
                auto filled = std::make_shared<platform::TextArray>(
                    *std::dynamic_pointer_cast<const platform::TextArray>(std::get<platform::ForeignRef>(given[2])));
                for (std::size_t at = 0; at < filled->items.size(); ++at)
                    filled->items[at] = Text(1, static_cast<char16_t>(u'3' + at));
                given[2] = platform::ForeignRef(filled);
                return platform::Empty{};
            },
            {u"Language", u"IdxArray", u"TextArray"});
        return companion;
    });
    Create();
    const auto step = [&](SimulatedObject& object, TextView member, float x = 750) {
        button->MouseDown(1, 750, 300);
        object.FailMember(member, Refusal());
        const ComponentError error = Raised([&] { button->MouseUp(x, 300); });
        object.MendMember(member);
        return error.description;
    };
    EXPECT_EQ(step(*box, u"Cls"), u"Refused\r\n3");
    EXPECT_EQ(step(*box, u"hDC"), u"Refused\r\n4");
    EXPECT_EQ(step(*box, u"Refresh"), u"Refused\r\n4");
    EXPECT_EQ(step(*form, u"x", 1e30f), u"Overflow\r\n7");
    EXPECT_EQ(step(*form, u"OnButtonClick"), u"Refused\r\n8");
}

TEST_F(Button, AFormWithoutTheProcedureIsAnError) {
    const auto bare = desktop.MakeObject(u"Form", "bare");
    box->SetProperty(u"Parent", HostObjectRef(bare));
    Create();
    button->MouseDown(1, 750, 300);
    EXPECT_EQ(Raised([&] { button->MouseUp(750, 300); }).number, 438);
}

TEST_F(Button, BeforeCreateTheMissingBoxIsTheError) {
    const struct {
        const char16_t* source;
        std::function<void()> call;
    } rows[] = {
        {u"KWOPicBtn.GotFocus", [&] { button->GotFocus(); }},
        {u"KWOPicBtn.LostFocus", [&] { button->LostFocus(); }},
        {u"KWOPicBtn.MouseUp", [&] { button->MouseUp(0, 0); }},
    };
    for (const auto& row : rows) {
        const ComponentError error = Raised(row.call);
        EXPECT_EQ(error.number, 91);
        EXPECT_EQ(error.source, row.source);
    }
    EXPECT_NO_THROW(button->MouseDown(1, 0, 0));
    EXPECT_NO_THROW(button->MouseMove(0, 0));
    EXPECT_NO_THROW(button->DblClick());
}

TEST_F(Button, WhatTheHostRefusesHasTheMembersName) {
    const struct {
        TextView member;
        const char16_t* source;
        std::function<void()> call;
    } rows[] = {
        {u"Parent", u"KWOPicBtn.Create", [&] { button->Create(box, u"x"); }},
        {u"hWnd", u"KWOPicBtn.Create", [&] { button->Create(box, u"x"); }},
        {u"hDC", u"KWOPicBtn.Create", [&] { button->Create(box, u"x"); }},
        {u"Cls", u"KWOPicBtn.Resize", [&] { button->Resize(); }},
        {u"hDC", u"KWOPicBtn.GotFocus", [&] { button->GotFocus(); }},
        {u"Refresh", u"KWOPicBtn.GotFocus", [&] { button->GotFocus(); }},
        {u"Refresh", u"KWOPicBtn.LostFocus", [&] { button->LostFocus(); }},
        {u"hDC", u"KWOPicBtn.MouseDown", [&] { button->MouseDown(1, 0, 0); }},
        {u"Cls", u"KWOPicBtn.DblClick",
         [&] {
             button->MouseDown(2, 0, 0);
             box->MendMember(u"Cls");
             button->MouseDown(1, 0, 0);
             box->FailMember(u"Cls", Refusal());
             button->DblClick();
         }},
        {u"Cls", u"KWOPicBtn.MouseUp", [&] { button->MouseUp(0, 0); }},
    };
    for (const auto& row : rows) {
        Create();
        box->FailMember(row.member, Refusal());
        const ComponentError error = Raised(row.call);
        box->MendMember(row.member);
        EXPECT_EQ(error.number, 380) << std::string(row.source, row.source + 20);
        EXPECT_EQ(error.source, row.source);
        EXPECT_EQ(error.description.substr(0, 7), u"Refused");
    }
}

TEST_F(Button, PositionsThatAreNoNumbersOverflow) {
    Create();
    EXPECT_EQ(Raised([&] { button->MouseDown(1, std::nanf(""), 0); }).number, 6);
    EXPECT_EQ(Raised([&] { button->MouseDown(1, 1e30f, 0); }).number, 6);
    EXPECT_EQ(clicks, 0);
}

TEST_F(Button, AllButtonsShareTheNewestScale) {
    Create();
    desktop.screen.twipsPerPixelX = 10;
    desktop.screen.twipsPerPixelY = 10;
    KWOPicBtn newer(component);
    button->MouseDown(1, 99 * 15, 300);
    EXPECT_EQ(Drawn(), Lines{}) << "148 pixels are outside";
}

TEST_F(Button, TheScalesAreTheScreensRoundedAxisByAxis) {
    desktop.screen.twipsPerPixelX = 10.6;
    desktop.screen.twipsPerPixelY = 12.5;
    button.emplace(component);
    Create();
    const auto presses = [&](float x, float y) {
        button->MouseDown(1, x, y);
        const bool drawn = !Drawn().empty();
        button->MouseUp(-1000, -1000);
        Drawn();
        return drawn;
    };
    EXPECT_TRUE(presses(1094, 0));   // 99.45 pixels of 11 twips
    EXPECT_FALSE(presses(1095, 0));  // 99.55
    EXPECT_TRUE(presses(0, 473));    // 39.4 pixels of 12 twips
    EXPECT_FALSE(presses(0, 475));   // 39.6
}

TEST_F(Button, ASecondCreateThatFailsHasTakenTheNewBox) {
    Create();
    const auto other = MakeBox(88, 600);
    other->FailMember(u"Parent", Refusal());
    const ComponentError error = Raised([&] { button->Create(other, u"&New"); });
    EXPECT_EQ(error.number, 380);
    EXPECT_EQ(error.source, u"KWOPicBtn.Create");
    EXPECT_EQ(button->Caption(), u"&Save");
    desktop.log.Clear();
    button->LostFocus();
    EXPECT_EQ(Drawn()[1], "DrawEdge 88 (0,0,100,40) 5 0xf");
}

TEST_F(Button, ASecondCreateKeepsTheStyleAndThePress) {
    Create();
    button->SetTextAlignment(3);
    button->SetMultiLine(false);
    button->MouseDown(1, 750, 300);
    Drawn();
    button->Create(box, u"&New");
    EXPECT_EQ(Drawn(), (Lines{"Call box.Cls", "DrawEdge 77 (0,0,100,40) 5 0xf",
                              "DrawText 77 \"&New\" (2,2,98,38) 0x8024", "Call box.Refresh"}));
    EXPECT_EQ(button->Caption(), u"&New");
    std::int16_t code = 'S';
    std::int16_t shift = 4;
    EXPECT_FALSE(button->Form_KeyDown(code, shift));
    button->MouseUp(750, 300);
    EXPECT_EQ(clicks, 1);
}

TEST_F(Button, ReleasesWithoutTheTextsOfItsSteps) {
    Create();
    desktop.components.Install(u"KWOInit.KWOInitialize",
                               []() -> HostObjectRef { platform::Raise(1234, u"companion", u"broken"); });
    button->MouseDown(1, 750, 300);
    EXPECT_NO_THROW(button->MouseUp(750, 300));
    EXPECT_EQ(clicks, 1);
    box->FailMember(u"Cls", Refusal());
    EXPECT_EQ(Raised([&] { button->MouseUp(750, 300); }).description, u"Refused\r\nUndefined Message");
}

TEST_F(Button, LetsGoOfTheCallersObjects) {
    Create();
    button->MouseDown(1, 750, 300);
    button->MouseUp(750, 300);
    button.reset();
    form->SetProperty(u"ActiveControl", HostObjectRef());
    EXPECT_EQ(box.use_count(), 1);
}

}  // namespace
}  // namespace kwo::controls
