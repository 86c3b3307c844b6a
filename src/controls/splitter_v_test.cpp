#include "controls/splitter_v.h"

#include <functional>
#include <new>
#include <optional>
#include <set>
#include <string>

#include "controls/controls_fixture.h"

namespace kwo::controls {
namespace {

/// Two panes and a bar in a container of 6000 by 4000 twips, whose client area begins at (100, 50) on the screen.
class Splitter : public ControlsTest {
protected:
    Splitter() {
        container = MakeContainer(900, "container");
        left = MakeControl("left", 0);
        right = MakeControl("right", 3000);
        bar = MakeControl("bar", 2000);
        bar->SetProperty(u"Width", 60.0f);
        desktop.screenDrawing.origins[900] = {100, 50};
        splitter.emplace(component);
    }
    std::shared_ptr<SimulatedObject> MakeContainer(std::int32_t window, std::string label, float unitsPerPixel = 15) {
        auto made = desktop.MakeObject(u"Form", std::move(label));
        made->SetProperty(u"hWnd", window);
        made->SetProperty(u"ScaleMode", std::int16_t{1});
        made->SetProperty(u"ScaleWidth", 6000.0f);
        made->SetProperty(u"ScaleHeight", 4000.0f);
        for (const TextView name : {u"ScaleX", u"ScaleY"}) {
            made->SetMethod(name, [unitsPerPixel](std::span<Variant>) -> Variant { return unitsPerPixel; });
        }
        return made;
    }
    std::shared_ptr<SimulatedObject> MakeControl(std::string label, float place) {
        auto made = desktop.MakeObject(u"PictureBox", std::move(label));
        made->SetProperty(u"Container", HostObjectRef(container));
        made->SetProperty(u"Parent", HostObjectRef(form));
        made->SetProperty(u"Left", place);
        made->SetProperty(u"Top", 0.0f);
        made->SetProperty(u"Width", 1000.0f);
        made->SetProperty(u"Height", 4000.0f);
        SimulatedObject* const self = made.get();
        made->SetMethod(u"Move", [self](std::span<Variant> given) -> Variant {
            const TextView names[] = {u"Left", u"Top", u"Width", u"Height"};
            for (std::size_t at = 0; at < given.size(); ++at)
                self->SetProperty(names[at], given[at]);
            return platform::Empty{};
        });
        return made;
    }
    bool Create(KWOSplitterV::Options options = {}) { return splitter->Create(left, right, bar, options); }
    void CreateQuietly(KWOSplitterV::Options options = {}) {
        ASSERT_TRUE(Create(options));
        desktop.log.Clear();
    }
    Lines Starting(std::string_view prefix) const { return desktop.log.Starting(prefix); }
    std::size_t LinesDrawn() const { return Starting("LineTo").size(); }
    /// Where there are lines: what is drawn again is erased.
    std::set<std::string> LinesOnTheScreen() const {
        std::set<std::string> places;
        for (const std::string& begin : Starting("MoveTo")) {
            const std::string place = begin.substr(begin.find('('));
            if (!places.insert(place).second) places.erase(place);
        }
        return places;
    }

    std::shared_ptr<SimulatedObject> container;
    std::shared_ptr<SimulatedObject> left;
    std::shared_ptr<SimulatedObject> right;
    std::shared_ptr<SimulatedObject> bar;
    std::optional<KWOSplitterV> splitter;
};

KWOSplitterV::Options Margins(float leftMargin, float top, float rightMargin, float bottom) {
    return {.marginLeft = leftMargin, .marginTop = top, .marginRight = rightMargin, .marginBottom = bottom};
}

TEST_F(Splitter, NothingHappensAfterACreateWithoutMemory) {
    for (const bool isSecond : {false, true}) {
        splitter.emplace(component);
        if (isSecond) CreateQuietly();
        desktop.FailCall("VariantChangeType", 2, platform::simulated::Faults::kNoMemory);
        EXPECT_THROW(Create(), std::bad_alloc);
        desktop.log.Clear();
        splitter->MouseDown(1, 30);
        splitter->Resize();
        EXPECT_EQ(TakeLog(), Lines{});
        EXPECT_TRUE(Create());
    }
}

TEST_F(Splitter, TheContainersWindowIsTakenWithOrWithoutASign) {
    container->SetProperty(u"hWnd", 4294967295.0);
    const auto same = MakeContainer(-1, "same");
    left->SetProperty(u"Container", HostObjectRef(same));
    desktop.screenDrawing.origins[-1] = {100, 50};

    ASSERT_TRUE(Create());

    EXPECT_EQ(left->Property(u"Container"), Variant(HostObjectRef(same))) << "the same window";
    EXPECT_NO_THROW(splitter->MouseDown(1, 30));
    EXPECT_EQ(LinesDrawn(), 1u);
}

TEST_F(Splitter, CreatePlacesTheBarAndFitsThePanes) {
    EXPECT_TRUE(Create());
    EXPECT_EQ(TakeLog(),
              (Lines{"Call container.ScaleX 1,3,1", "Call container.ScaleY 1,3,1", "Call bar.Move 2000,0,60,4000",
                     "Call left.Move 0,0,2000,4000", "Call right.Move 2060,0,3940,4000"}));
    EXPECT_EQ(component.ProgramName(), u"KWOUtil");
}

TEST_F(Splitter, MarginsAndSizeCount) {
    auto options = Margins(100, 200, 300, 400);
    options.splitterSizeInPixels = std::int16_t{6};
    EXPECT_TRUE(Create(options));
    EXPECT_EQ(Starting("Call bar.Move"), (Lines{"Call bar.Move 2000,200,90,3400"}));
    EXPECT_EQ(Starting("Call left.Move"), (Lines{"Call left.Move 100,200,1900,3400"}));
    EXPECT_EQ(Starting("Call right.Move"), (Lines{"Call right.Move 2090,200,3510,3400"}));
    EXPECT_EQ(splitter->LeftMargin(), 100);
    EXPECT_EQ(splitter->TopMargin(), 200);
    EXPECT_EQ(splitter->RightMargin(), 300);
    EXPECT_EQ(splitter->BottomMargin(), 400);
}

TEST_F(Splitter, WhatIsLeftOutStaysAsItWas) {
    splitter->SetLeftMargin(50);
    splitter->SetBottomMargin(70);
    EXPECT_TRUE(Create({.marginTop = 20.0f}));
    EXPECT_EQ(Starting("Call left.Move"), (Lines{"Call left.Move 50,20,1950,3910"}));
}

TEST_F(Splitter, TheBarStartsInsideItsLimits) {
    const auto startsAt = [&](float place) {
        bar->SetProperty(u"Left", place);
        desktop.log.Clear();
        Create(Margins(100, 0, 300, 0));
        const std::string moved = Starting("Call bar.Move").front();
        return moved.substr(14, moved.find(',') - 14);
    };
    // The limit is 6000 - 300 - 60.
    EXPECT_EQ(startsAt(5640), "5640");
    EXPECT_EQ(startsAt(5641), "5640");
    EXPECT_EQ(startsAt(90'000), "5640");
    EXPECT_EQ(startsAt(100), "100");
    EXPECT_EQ(startsAt(99), "100");
    EXPECT_EQ(startsAt(-5), "100");
}

TEST_F(Splitter, PanesAreBroughtIntoTheBarsContainer) {
    const auto other = MakeContainer(901, "other");
    left->SetProperty(u"Container", HostObjectRef(other));
    EXPECT_TRUE(Create());
    EXPECT_EQ(Starting("Set"), (Lines{"Set left.Container <Form>"}));
    EXPECT_EQ(left->Property(u"Container"), Variant(HostObjectRef(container)));
    right->SetProperty(u"Container", HostObjectRef(other));
    desktop.log.Clear();
    EXPECT_TRUE(Create());
    EXPECT_EQ(Starting("Set"), (Lines{"Set right.Container <Form>"}));
}

TEST_F(Splitter, APaneInSomethingElseStoresNothing) {
    right->SetProperty(u"Container", HostObjectRef(desktop.MakeObject(u"Image")));
    EXPECT_FALSE(Create());
    EXPECT_EQ(TakeLog(), Lines{});
    splitter->Resize();
    splitter->MouseDown(1, 0);
    EXPECT_EQ(TakeLog(), Lines{});
    right->SetProperty(u"Container", HostObjectRef());
    EXPECT_FALSE(Create());
    EXPECT_EQ(Starting("Ask"), Lines{});
}

TEST_F(Splitter, AFailureIsToldByABoxAndFalse) {
    std::vector<platform::simulated::SimulatedWindowService::Question> boxes;
    desktop.windows.onAsk = [&](const auto& question) {
        boxes.push_back(question);
        return 1;
    };
    const struct {
        SimulatedObject& object;
        TextView member;
    } rows[] = {
        {*left, u"Container"},        {*left, u"Parent"},      {*bar, u"Container"},    {*container, u"hWnd"},
        {*container, u"ScaleMode"},   {*container, u"ScaleX"}, {*container, u"ScaleY"}, {*container, u"ScaleWidth"},
        {*container, u"ScaleHeight"}, {*bar, u"Left"},         {*bar, u"Move"}};
    for (const auto& row : rows) {
        boxes.clear();
        row.object.FailMember(row.member, Refusal(1234));
        EXPECT_FALSE(Create()) << std::string(row.member.begin(), row.member.end());
        row.object.MendMember(row.member);
        ASSERT_EQ(boxes.size(), 1u) << std::string(row.member.begin(), row.member.end());
        EXPECT_NE(boxes[0].prompt.find(u"Refused"), Text::npos);
        EXPECT_EQ(boxes[0].style & 0xFF, 16u);
        desktop.log.Clear();
        splitter->MouseDown(1, 0);
        EXPECT_EQ(TakeLog(), Lines{}) << "not created";
    }
    boxes.clear();
    EXPECT_FALSE(splitter->Create(nullptr, right, bar, {}));
    EXPECT_FALSE(splitter->Create(left, right, nullptr, {}));
    EXPECT_FALSE(splitter->Create(left, right, bar, {.marginTop = Text(u"wide")}));
    ASSERT_EQ(boxes.size(), 3u);
    EXPECT_NE(boxes[0].prompt.find(u"KWOSplitterV.Create"), Text::npos) << "where the host names no source";
}

TEST_F(Splitter, ABarBeyondItsLimitIsPutThereAlsoBeforeTheLeftMargin) {
    container->SetProperty(u"ScaleWidth", 300.0f);
    const auto startsAt = [&](float place) {
        bar->SetProperty(u"Left", place);
        desktop.log.Clear();
        Create(Margins(100, 0, 200, 0));
        return Starting("Call bar.Move").front();
    };
    // The limit is 300 - 200 - 60.
    EXPECT_EQ(startsAt(50), "Call bar.Move 40,0,60,4000");
    EXPECT_EQ(startsAt(40), "Call bar.Move 100,0,60,4000");
}

TEST_F(Splitter, ASecondCreateThatFailsLeavesNothingCreated) {
    CreateQuietly();
    splitter->MouseDown(1, 30);
    container->FailMember(u"ScaleWidth", Refusal());
    EXPECT_FALSE(Create());
    container->MendMember(u"ScaleWidth");
    desktop.log.Clear();
    splitter->MouseDown(1, 30);
    splitter->MouseMove(400);
    splitter->MouseUp(400);
    splitter->Resize();
    EXPECT_EQ(TakeLog(), Lines{});
}

TEST_F(Splitter, ASecondCreateKeepsSizeMarginsAndDrag) {
    auto options = Margins(100, 200, 300, 400);
    options.splitterSizeInPixels = std::int16_t{6};
    CreateQuietly(options);
    splitter->MouseDown(1, 30);
    EXPECT_TRUE(Create());
    EXPECT_EQ(Starting("Call bar.Move"), (Lines{"Call bar.Move 2000,200,90,3400"}));
    desktop.log.Clear();
    splitter->MouseUp(400);
    EXPECT_EQ(Starting("Call bar.Move"), (Lines{"Call bar.Move 2370,200,90,5400"}));
    EXPECT_TRUE(Create(Margins(1, 2, 3, 4)));
    EXPECT_EQ(Starting("Call bar.Move").back(), "Call bar.Move 2370,2,90,3994");
}

TEST_F(Splitter, AFailureIsTheOnlyOneThatItsBoxTells) {
    Text prompt;
    desktop.windows.onAsk = [&](const auto& question) {
        prompt = question.prompt;
        return 1;
    };
    component.error.KWO_SaveError({77, u"Elsewhere", u"An hour ago", {}, 0}, {.source = u"Elsewhere"});
    bar->FailMember(u"Left", Refusal(1234));
    EXPECT_FALSE(Create());
    EXPECT_EQ(prompt.find(u"An hour ago"), Text::npos);
    EXPECT_NE(prompt.find(u"Error source: KWOSplitterV.Create\r\nErr number:1234\r\nRefused\r\n"), Text::npos);
    EXPECT_EQ(component.error.Saved().number, 1234);
    EXPECT_EQ(component.error.Saved().source, u"KWOSplitterV.Create");
}

TEST_F(Splitter, ResizeFitsThePanesToTheBar) {
    CreateQuietly(Margins(10, 20, 30, 40));
    container->SetProperty(u"ScaleWidth", 3000.0f);
    container->SetProperty(u"ScaleHeight", 2000.0f);
    splitter->Resize();
    EXPECT_EQ(TakeLog(), (Lines{"Call left.Move 10,20,1990,1940", "Call right.Move 2060,20,900,1940"}));
    // The limit is 3000 - 30 - 60; a bar that stands at it is put there again.
    bar->SetProperty(u"Left", 2910.0f);
    splitter->Resize();
    EXPECT_EQ(TakeLog().front(), "Let bar.Left 2910");
    bar->SetProperty(u"Left", 2909.0f);
    splitter->Resize();
    EXPECT_EQ(TakeLog().front(), "Call left.Move 10,20,2899,1940");
    bar->SetProperty(u"Left", 9000.0f);
    splitter->Resize();
    EXPECT_EQ(TakeLog().front(), "Let bar.Left 2910");
}

TEST_F(Splitter, NothingHappensInAMinimisedForm) {
    CreateQuietly();
    form->SetProperty(u"WindowState", std::int16_t{1});
    splitter->Resize();
    EXPECT_EQ(TakeLog(), Lines{});
    form->SetProperty(u"WindowState", std::int16_t{2});
    splitter->Resize();
    EXPECT_EQ(TakeLog().size(), 2u);
}

TEST_F(Splitter, ResizePassesOverWhatTheHostRefuses) {
    CreateQuietly();
    const struct {
        SimulatedObject& object;
        TextView member;
        std::size_t calls;
    } rows[] = {
        {*form, u"WindowState", 2},      {*left, u"Move", 2}, {*right, u"Move", 2},  {*bar, u"Left", 0},
        {*container, u"ScaleHeight", 1}, {*bar, u"Width", 1}, {*left, u"Height", 1}, {*container, u"ScaleWidth", 1}};
    for (const auto& row : rows) {
        row.object.FailMember(row.member, Refusal());
        EXPECT_NO_THROW(splitter->Resize());
        row.object.MendMember(row.member);
        EXPECT_EQ(TakeLog().size(), row.calls) << std::string(row.member.begin(), row.member.end());
    }
}

TEST_F(Splitter, APressDrawsTheLineAcrossTheScreen) {
    CreateQuietly();
    splitter->MouseDown(1, 30);
    // 2000 / 15 = 133.3, 4000 / 15 = 266.7
    EXPECT_EQ(TakeLog(), (Lines{"CreateDC DISPLAY", "CreatePen 6 4 0x80000003", "SetROP2 1 6", "SelectObject 1 8193",
                                "SelectObject 1 1005", "MoveTo 1 (233,50)", "LineTo 1 (233,317)", "SetROP2 1 13",
                                "SelectObject 1 1000", "SelectObject 1 1007", "DeleteObject 8193", "DeleteDC 1"}));
    EXPECT_EQ(desktop.screenDrawing.openContexts, 0);
    EXPECT_EQ(desktop.screenDrawing.livePens, 0);
}

TEST_F(Splitter, AnotherButtonStartsNoDrag) {
    CreateQuietly();
    for (const std::int16_t button : std::initializer_list<std::int16_t>{2, 3, 4, 0})
        splitter->MouseDown(button, 30);
    splitter->MouseMove(100);
    splitter->MouseUp(100);
    EXPECT_EQ(TakeLog(), Lines{});
}

TEST_F(Splitter, ThePressOfAnyButtonIsWhereTheBarWasGrabbed) {
    CreateQuietly();
    splitter->MouseDown(1, 30);
    splitter->MouseDown(2, 100);
    desktop.log.Clear();
    splitter->MouseUp(400);
    EXPECT_EQ(Starting("Call bar.Move"), (Lines{"Call bar.Move 2300,0,60,6000"}));
}

TEST_F(Splitter, TheLineIsAsLongAsTheBarFromItsTop) {
    CreateQuietly();
    bar->SetProperty(u"Top", 450.0f);
    bar->SetProperty(u"Height", 3000.0f);
    splitter->MouseDown(1, 0);
    EXPECT_EQ(Starting("MoveTo"), (Lines{"MoveTo 1 (233,80)"}));
    EXPECT_EQ(Starting("LineTo"), (Lines{"LineTo 1 (233,280)"}));
}

TEST_F(Splitter, TheScalesAreTheScreensRoundedAxisByAxis) {
    desktop.screen.twipsPerPixelX = 10.6;
    desktop.screen.twipsPerPixelY = 12.5;
    splitter.emplace(component);
    CreateQuietly();
    splitter->MouseDown(1, 0);
    // 2000 / 11 = 181.8, 4000 / 12 = 333.3
    EXPECT_EQ(Starting("MoveTo"), (Lines{"MoveTo 1 (282,50)"}));
    EXPECT_EQ(Starting("LineTo"), (Lines{"LineTo 1 (282,383)"}));
    splitter->MouseUp(0);
    EXPECT_EQ(Starting("Call bar.Move"), (Lines{"Call bar.Move 2000,0,44,6000"}));
}

TEST_F(Splitter, TheDragIsOverBeforeTheBarMoves) {
    CreateQuietly();
    splitter->MouseDown(1, 30);
    desktop.log.Clear();
    bar->SetMethod(u"Move", [&](std::span<Variant>) -> Variant {
        // A host may process messages while it moves a control.
        splitter->MouseMove(900);
        platform::Raise(380, u"Host", u"Refused");
    });
    EXPECT_EQ(Raised([&] { splitter->MouseUp(400); }).number, 380);
    EXPECT_EQ(LinesDrawn(), 1u);
    desktop.log.Clear();
    splitter->MouseMove(500);
    splitter->MouseUp(500);
    EXPECT_EQ(TakeLog(), Lines{});
}

TEST_F(Splitter, AMovementErasesTheLineAndDrawsItElsewhere) {
    CreateQuietly();
    splitter->MouseDown(1, 30);
    desktop.log.Clear();
    splitter->MouseMove(400);
    EXPECT_EQ(Starting("MoveTo"), (Lines{"MoveTo 2 (233,50)", "MoveTo 2 (260,50)"}));
    desktop.log.Clear();
    splitter->MouseMove(400);
    EXPECT_EQ(TakeLog(), Lines{});
}

TEST_F(Splitter, AReleaseErasesTheLineAndMovesTheBar) {
    CreateQuietly();
    splitter->MouseDown(1, 30);
    splitter->MouseMove(400);
    desktop.log.Clear();
    splitter->MouseUp(400);
    EXPECT_EQ(Starting("MoveTo"), (Lines{"MoveTo 3 (260,50)"}));
    EXPECT_EQ(Starting("Call"), (Lines{"Call bar.Move 2370,0,60,6000", "Call left.Move 0,0,2370,4000",
                                       "Call right.Move 2430,0,3570,4000"}));
    desktop.log.Clear();
    splitter->MouseUp(400);
    splitter->MouseMove(400);
    EXPECT_EQ(TakeLog(), Lines{});
}

TEST_F(Splitter, AnEvenNumberOfLinesLeavesNothingOnTheScreen) {
    CreateQuietly();
    splitter->MouseDown(1, 30);
    for (const float x : {100.0f, 100.0f, -5000.0f, 9000.0f, 0.0f, 30.0f})
        splitter->MouseMove(x);
    splitter->MouseUp(30);
    EXPECT_EQ(LinesDrawn() % 2, 0u);
    EXPECT_GT(LinesDrawn(), 8u);
}

TEST_F(Splitter, ALineThatCannotBeDrawnIsNotErasedEither) {
    CreateQuietly();
    container->FailMember(u"hWnd", Refusal());
    EXPECT_EQ(Raised([&] { splitter->MouseDown(1, 30); }).number, 380);
    container->MendMember(u"hWnd");
    splitter->MouseMove(400);
    splitter->MouseUp(400);
    EXPECT_EQ(LinesDrawn(), 0u);
}

TEST_F(Splitter, AMovementThatFailsLeavesTheLineWhereItIs) {
    constexpr float kBeyondTheScreen = 1e12f;
    CreateQuietly();
    splitter->MouseDown(1, 30);
    splitter->SetLeftMargin(kBeyondTheScreen);
    EXPECT_EQ(Raised([&] { splitter->MouseMove(400); }).number, 6);
    splitter->SetLeftMargin(0);
    splitter->MouseUp(30);
    EXPECT_EQ(Starting("MoveTo"), (Lines{"MoveTo 1 (233,50)", "MoveTo 3 (233,50)"}));
}

TEST_F(Splitter, ACreateThatFailsErasesTheLineAndEndsTheDrag) {
    CreateQuietly();
    splitter->MouseDown(1, 30);
    splitter->MouseMove(400);
    EXPECT_EQ(LinesOnTheScreen().size(), 1u);
    const auto other = MakeContainer(901, "other");
    bar->SetProperty(u"Container", HostObjectRef(other));
    other->FailMember(u"ScaleWidth", Refusal());
    EXPECT_FALSE(Create());
    EXPECT_TRUE(LinesOnTheScreen().empty());

    other->MendMember(u"ScaleWidth");
    CreateQuietly();
    splitter->MouseMove(500);
    EXPECT_EQ(LinesDrawn(), 0u) << "nobody has pressed the button";
}

TEST_F(Splitter, ALineIsErasedAlsoIfTheHostForwardsAnEventWhileItIsAsked) {
    CreateQuietly();
    const std::function<void()> intrusions[] = {[&] { splitter->MouseUp(30); }, [&] { splitter->MouseMove(600); }};
    const std::function<void()> events[] = {[&] { splitter->MouseMove(400); }, [&] { splitter->MouseUp(400); }};
    for (const auto& event : events) {
        for (const auto& intrusion : intrusions) {
            int uses = 0;
            for (int use = 1; use == 1 || uses >= use; ++use) {
                splitter->MouseDown(1, 30);
                uses = 0;
                bar->whenUsed = [&] {
                    if (++uses == use) intrusion();
                };
                event();
                bar->whenUsed = nullptr;
                splitter->MouseUp(30);
                EXPECT_TRUE(LinesOnTheScreen().empty()) << use;
            }
            EXPECT_GT(uses, 2);
        }
    }
}

class SplitterLimitIntended : public Splitter {};

TEST_F(SplitterLimitIntended, TheRightLimitTakesTheLeftMarginOffAsWell) {
    CreateQuietly(Margins(100, 0, 300, 0));
    splitter->MouseDown(1, 0);
    splitter->MouseUp(90'000);
    // 6000 - 100 - 300 - 60
    EXPECT_EQ(Starting("Call bar.Move"), (Lines{"Call bar.Move 5540,0,60,6000"}));
}

TEST_F(Splitter, TheLeftLimitIsTheLeftMargin) {
    CreateQuietly(Margins(100, 0, 300, 0));
    splitter->MouseDown(1, 0);
    desktop.log.Clear();
    splitter->MouseMove(-90'000);
    EXPECT_EQ(Starting("MoveTo").back(), "MoveTo 2 (107,50)");
    splitter->MouseUp(-90'000);
    EXPECT_EQ(Starting("Call bar.Move"), (Lines{"Call bar.Move 100,0,60,6000"}));
}

TEST_F(Splitter, TheLeftMarginComesBeforeTheRightLimit) {
    container->SetProperty(u"ScaleWidth", 300.0f);
    CreateQuietly(Margins(100, 0, 200, 0));
    splitter->MouseDown(1, 0);
    // The limit is 300 - 100 - 200 - 60; the bar stands at the left margin.
    splitter->MouseUp(-50);
    EXPECT_EQ(Starting("Call bar.Move"), (Lines{"Call bar.Move 100,0,60,300"}));
    desktop.log.Clear();
    bar->SetProperty(u"Left", 100.0f);
    splitter->MouseDown(1, 0);
    splitter->MouseUp(50);
    EXPECT_EQ(Starting("Call bar.Move"), (Lines{"Call bar.Move -60,0,60,300"}));
}

using SplitterLineIntended = Splitter;

TEST_F(SplitterLineIntended, TheLineIsAtThePointerAndTheBarWhereItWasGrabbed) {
    CreateQuietly();
    splitter->MouseDown(1, 45);
    desktop.log.Clear();
    splitter->MouseMove(300);
    EXPECT_EQ(Starting("MoveTo").back(), "MoveTo 2 (253,50)");  // 2300 / 15
    splitter->MouseUp(300);
    EXPECT_EQ(Starting("Call bar.Move"), (Lines{"Call bar.Move 2255,0,60,6000"}));
}

using SplitterReleaseIntended = Splitter;

TEST_F(SplitterReleaseIntended, TheBarsSizeIsNotThatOfTheBeginning) {
    // A container in pixels: the width at the beginning is 4, after a drag 60; the height comes from the width.
    container->SetProperty(u"ScaleMode", std::int16_t{3});
    for (const TextView name : {u"ScaleX", u"ScaleY"})
        container->SetMethod(name, [](std::span<Variant>) -> Variant { return 1.0f; });
    ASSERT_TRUE(Create({.marginTop = 5.0f, .marginBottom = 7.0f}));
    EXPECT_EQ(Starting("Call bar.Move"), (Lines{"Call bar.Move 2000,5,4,3988"}));
    EXPECT_EQ(Starting("Call container.ScaleX"), (Lines{"Call container.ScaleX 1,3,3"}));
    desktop.log.Clear();
    splitter->MouseDown(1, 0);
    splitter->MouseUp(10);
    EXPECT_EQ(Starting("Call bar.Move"), (Lines{"Call bar.Move 2010,5,60,5988"}));
}

TEST_F(Splitter, WhatTheHostRefusesInTheMiddleLeavesNoContextOpen) {
    const std::function<void()> steps[] = {[&] { splitter->MouseDown(1, 30); }, [&] { splitter->MouseMove(400); },
                                           [&] { splitter->MouseUp(400); }};
    const struct {
        SimulatedObject& object;
        TextView member;
    } rows[] = {{*bar, u"Left"},  {*bar, u"Top"},        {*bar, u"Height"},
                {*bar, u"Width"}, {*container, u"hWnd"}, {*container, u"ScaleWidth"}};
    CreateQuietly();
    int raised = 0;
    for (const auto& row : rows) {
        for (std::size_t failing = 0; failing < std::size(steps); ++failing) {
            for (std::size_t at = 0; at <= failing; ++at) {
                if (at == failing) row.object.FailMember(row.member, Refusal());
                raised += Raised(steps[at]).number == 380 ? 1 : 0;
            }
            row.object.MendMember(row.member);
            EXPECT_EQ(desktop.screenDrawing.openContexts, 0);
            EXPECT_EQ(desktop.screenDrawing.livePens, 0);
            splitter->MouseUp(0);
        }
    }
    // The width and the container are not asked for by the press.
    EXPECT_EQ(raised, 16);
}

TEST_F(Splitter, AScreenWithoutContextsIsHarmless) {
    CreateQuietly();
    desktop.FailCall("CreateDC", 1, 8);
    desktop.FailCall("CreatePen", 1, 8);
    EXPECT_NO_THROW(splitter->MouseDown(1, 0));
    EXPECT_NO_THROW(splitter->MouseUp(0));
}

TEST_F(Splitter, ACreateThatFailsKeepsNoneOfTheCallersObjects) {
    auto odd = desktop.MakeObject(u"Odd", "odd");
    EXPECT_FALSE(splitter->Create(left, right, odd, {}));
    const std::weak_ptr<SimulatedObject> watched[] = {std::exchange(left, nullptr), std::exchange(right, nullptr),
                                                      std::exchange(odd, nullptr)};
    for (const auto& object : watched)
        EXPECT_TRUE(object.expired()) << "it may be the very object that owns the splitter";
}

TEST_F(Splitter, LetsGoOfTheCallersObjects) {
    CreateQuietly();
    splitter.reset();
    for (const auto& object : {left, right, bar})
        EXPECT_EQ(object.use_count(), 2) << "the list's and the test's";
}

}  // namespace
}  // namespace kwo::controls
