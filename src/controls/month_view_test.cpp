#include "controls/month_view.h"

#include <cmath>
#include <new>

#include "controls/month_view_fixture.h"

namespace kwo::controls {
namespace {

class MonthView : public MonthViewTest {
protected:
    std::size_t Drawings() const { return desktop.log.Starting("DrawFocusRect").size(); }
    std::pair<int, int> Visible() const { return {view->VisibleMonth(), view->VisibleYear()}; }
};

using IntPair = std::pair<int, int>;

TEST_F(MonthView, CreationSetsTheProgramNameAndNothingElse) {
    EXPECT_EQ(component.ProgramName(), u"KWOUtil");
    EXPECT_FALSE(view->CanSelect());
    EXPECT_EQ(view->DayFontColor(), 0u);
    EXPECT_EQ(view->SelDay(), Date{});
}

TEST_F(MonthView, CreateShowsTheMonthOfTheFocus) {
    EXPECT_TRUE(Create({On(2026, 11, 21).days + 0.75}));
    EXPECT_EQ(focusGiven, On(2026, 11, 21));
    EXPECT_EQ(Visible(), IntPair(11, 2026));
    EXPECT_EQ(view->CaptionFontColor(), 0x80000012u);
    EXPECT_EQ(view->DayHdrFontColor(), 0x80000011u);
    EXPECT_EQ(view->DayFontColor(), 0x80000008u);
    EXPECT_EQ(view->SelDayFontColor(), 0x8000000Eu);
    EXPECT_EQ(view->CaptionBevel(), 0);
    EXPECT_EQ(view->DayHdrBevel(), 3);
    EXPECT_EQ(view->DayBevel(), 3);
    EXPECT_FALSE(view->CanSelect());
    EXPECT_FALSE(view->MultiSelect());
    EXPECT_EQ(box->Property(u"AutoRedraw"), Variant(true));
    EXPECT_EQ(box->Property(u"FillStyle"), Variant(std::int16_t{0}));
}

TEST_F(MonthView, TheDayColourIsWhatTheBoxMadeOfIt) {
    box->SetProperty(u"ForeColor", std::int32_t{0x0000FF});
    box->FixProperty(u"ForeColor");
    EXPECT_TRUE(Create(On(2026, 11, 21)));
    EXPECT_EQ(desktop.log.Starting("Let box.ForeColor").front(), "Let box.ForeColor -2147483640");
    EXPECT_EQ(view->DayFontColor(), 0x0000FFu);
}

TEST_F(MonthView, AFocusOfZeroIsToday) {
    desktop.clock.SetNow({On(2027, 3, 5).days + 0.9});
    EXPECT_TRUE(Create({0}));
    EXPECT_EQ(focusGiven, On(2027, 3, 5));
    EXPECT_EQ(Visible(), IntPair(3, 2027));
    EXPECT_TRUE(Create({0.9}));
    EXPECT_EQ(focusGiven, On(2027, 3, 5));
}

TEST_F(MonthView, WhatIsNoPictureBoxIsRefused) {
    Date focus = On(2026, 11, 21);
    EXPECT_FALSE(view->Create(nullptr, focus, {}));
    EXPECT_FALSE(view->Create(desktop.MakeObject(u"Label"), focus, {}));
    EXPECT_EQ(TakeLog(), Lines{});
    EXPECT_TRUE(Create(focus));
    EXPECT_FALSE(view->Create(nullptr, focus, {}));
    desktop.log.Clear();
    view->Resize();
    EXPECT_NE(TakeLog(), Lines{}) << "what was created stays";
}

TEST_F(MonthView, OptionsSayWhatTheUserMay) {
    const auto rights = [&](KWOMonthView::CreateOptions options) {
        EXPECT_TRUE(Create(On(2026, 11, 21), options));
        return std::pair(view->CanSelect(), view->MultiSelect());
    };
    EXPECT_EQ(rights({}), std::pair(false, false));
    EXPECT_EQ(rights({.canChange = true}), std::pair(true, false));
    EXPECT_EQ(rights({.canMultiSelect = true}), std::pair(true, true));
    EXPECT_EQ(rights({.canMultiSelect = true, .canChange = false}), std::pair(true, true));
    EXPECT_EQ(rights({.canMultiSelect = std::int16_t{7}}), std::pair(true, true));
    EXPECT_EQ(rights({.canMultiSelect = Text(u"True")}), std::pair(true, true));
}

TEST_F(MonthView, ASelectedDateIsSelectedFromTheStart) {
    const auto first = [&](Variant selDate) {
        EXPECT_TRUE(Create(On(2026, 11, 21), {.selDate = std::move(selDate)}));
        return view->SelDay();
    };
    EXPECT_EQ(first(On(2026, 11, 5)), On(2026, 11, 5));
    EXPECT_EQ(first(Text(u"11/6/2026")), On(2026, 11, 6));
    EXPECT_EQ(first(Date{0}), Date{});
    EXPECT_EQ(first(45'000.0), Date{}) << "a number is no date";
    EXPECT_EQ(first(Text(u"someday")), Date{});
    EXPECT_EQ(first(platform::Empty{}), Date{});
    EXPECT_EQ(first(platform::Missing()), Date{});
    const Date evening{On(2026, 11, 5).days + 0.75};
    EXPECT_EQ(first(evening), evening) << "with its time";
    EXPECT_TRUE(view->IsSelected(On(2026, 11, 6)));
}

TEST_F(MonthView, CreatingAgainStartsAfresh) {
    Ready(On(2026, 11, 21), {.selDate = On(2026, 11, 21), .canMultiSelect = true});
    view->SetCaptionFontColor(1);
    view->SetDayHdrFontColor(1);
    view->SetDayFontColor(1);
    view->SetSelDayFontColor(1);
    view->SetCaptionBevel(1);
    view->SetDayHdrBevel(1);
    view->SetDayBevel(1);
    EXPECT_TRUE(Create(On(2026, 12, 1)));
    EXPECT_EQ(view->SelDay(), Date{});
    EXPECT_FALSE(view->CanSelect());
    EXPECT_FALSE(view->MultiSelect());
    EXPECT_EQ(view->CaptionFontColor(), 0x80000012u);
    EXPECT_EQ(view->DayHdrFontColor(), 0x80000011u);
    EXPECT_EQ(view->DayFontColor(), 0x80000008u);
    EXPECT_EQ(view->SelDayFontColor(), 0x8000000Eu);
    EXPECT_EQ(view->CaptionBevel(), 0);
    EXPECT_EQ(view->DayHdrBevel(), 3);
    EXPECT_EQ(view->DayBevel(), 3);
}

TEST_F(MonthView, CreatingAgainForgetsIntervalAndNotifications) {
    Ready(On(2026, 11, 21), {.spinInterval = std::int16_t{500}, .notifyOnChange = true});
    Ready(On(2026, 11, 21), {});
    desktop.PostAt(400, [&] { view->MouseUp(); });
    view->MouseDown(1, 115 * 15, 10 * 15);
    EXPECT_EQ(Visible(), IntPair(2, 2027)) << "at once, at 150 and at 300";
    EXPECT_EQ(Notifications(), Lines{});
}

TEST_F(MonthView, CreatingAgainKeepsWeightsLimitsAndThePress) {
    Ready(On(2026, 11, 21));
    view->SetCaptionFontBold(true);
    view->SetDayHdrFontBold(true);
    view->SetDayFontBold(true);
    view->SetSelDayFontBold(true);
    view->SetMinDate(On(2026, 11, 5));
    view->SetMaxDate(On(2026, 12, 24));
    Click(2026, 11, 5);
    view->DblClick();
    Ready(On(2026, 12, 1));
    EXPECT_TRUE(view->CaptionFontBold() && view->DayHdrFontBold() && view->DayFontBold() && view->SelDayFontBold());
    EXPECT_EQ(view->MinDate(), On(2026, 11, 5));
    EXPECT_EQ(view->MaxDate(), On(2026, 12, 24));
    Key(34);
    EXPECT_EQ(Visible(), IntPair(12, 2026));
    Key(33);
    Key(33);
    EXPECT_EQ(Visible(), IntPair(11, 2026));
    desktop.log.Clear();
    view->MouseMove(60 * 15, 60 * 15);
    EXPECT_EQ(TakeLog(), (Lines{"Call box.Refresh"})) << "the double click waits for its release";
}

TEST_F(MonthView, TheScalesAreTheScreensRoundedAxisByAxis) {
    desktop.screen.twipsPerPixelX = 10.6;
    desktop.screen.twipsPerPixelY = 12.5;
    view.emplace(component);
    EXPECT_TRUE(Create(On(2026, 11, 21)));
    // 2000 / 11 = 182 pixels wide, texts of 195 / 12 = 16 pixels.
    EXPECT_EQ(desktop.log.Starting("DrawFrameControl"),
              (Lines{"DrawFrameControl 77 (4,4,26,26) 3 0x2", "DrawFrameControl 77 (156,4,178,26) 3 0x3"}));
    EXPECT_EQ(desktop.log.Starting("DrawFocusRect").size(), 1u);
    const auto steps = [&](float x, float y) {
        const int before = view->VisibleMonth();
        desktop.Post([&] { view->MouseUp(); });
        view->MouseDown(1, x, y);
        desktop.messages.ProcessPending();
        return view->VisibleMonth() - before;
    };
    EXPECT_EQ(steps(280, 100), -1);  // 25.45 pixels
    EXPECT_EQ(steps(281, 100), 0);   // 25.55
    EXPECT_EQ(steps(1800, 305), 1);  // 25.4
    EXPECT_EQ(steps(1800, 307), 0);  // 25.6
    desktop.log.Clear();
    view->ShowMonth(3, 2027);
    EXPECT_EQ(TakeLog().front(), "Call box.Line 38,297,60,1705,312,-2147483633") << "(27,5,155,26) in twips";
}

TEST_F(MonthView, HalfAPixelGoesToTheEvenOne) {
    Ready(On(2026, 11, 21));
    const auto steps = [&](float x, float y) {
        const int before = view->VisibleMonth();
        desktop.Post([&] { view->MouseUp(); });
        view->MouseDown(1, x * 15, y * 15);
        desktop.messages.ProcessPending();
        return view->VisibleMonth() - before;
    };
    // The arrow is at (4,4,23,23).
    EXPECT_EQ(steps(22.5f, 10), -1);
    EXPECT_EQ(steps(3.5f, 10), -1);
    EXPECT_EQ(steps(10, 22.5f), -1);
    EXPECT_EQ(steps(10, 3.5f), -1);
    EXPECT_EQ(steps(2.5f, 10), 0);
    EXPECT_EQ(steps(23.5f, 10), 0);
}

TEST_F(MonthView, AFailingCreateIsASavedErrorAndFalse) {
    const TextView members[] = {u"Parent",          u"AutoRedraw", u"BackColor", u"ForeColor", u"FillStyle",
                                u"FontTransparent", u"TextHeight", u"Width",     u"Height"};
    for (const TextView member : members) {
        KWOMonthView fresh(component);
        box->FailMember(member, Refusal(1234));
        Date focus = On(2026, 11, 21);
        EXPECT_FALSE(fresh.Create(box, focus, {})) << std::string(member.begin(), member.end());
        box->MendMember(member);
        desktop.log.Clear();
        fresh.Resize();
        EXPECT_EQ(TakeLog(), Lines{}) << "not created";
    }
    EXPECT_EQ(component.error.Saved().number, 1234);
    EXPECT_EQ(component.error.Saved().source, u"KWOMonthView.Create");
    EXPECT_EQ(component.error.Saved().description, u"Refused");
    // What only the drawing needs is no saved error, but no success either.
    for (const TextView member : {u"Font", u"Refresh"}) {
        KWOMonthView fresh(component);
        box->FailMember(member, Refusal(1234));
        Date focus = On(2026, 11, 21);
        EXPECT_FALSE(fresh.Create(box, focus, {}));
        box->MendMember(member);
    }
    Date focus = On(2026, 11, 21);
    EXPECT_FALSE(view->Create(box, focus, {.canMultiSelect = Text(u"perhaps")}));
    EXPECT_FALSE(view->Create(box, focus, {.spinInterval = Text(u"fast")}));
    EXPECT_FALSE(view->Create(box, focus, {.spinInterval = std::int32_t{40'000}}));
    Date beyond = {3'000'000};
    EXPECT_FALSE(view->Create(box, beyond, {}));
}

TEST_F(MonthView, AFailingCreateReplacesTheErrorThatWasSavedBefore) {
    component.error.KWO_SaveError({77, u"Elsewhere", u"An hour ago", {}, 0}, {.source = u"Elsewhere"});
    box->FailMember(u"Parent", Refusal(1234));
    EXPECT_FALSE(Create(On(2026, 11, 21)));
    EXPECT_EQ(component.error.Saved().number, 1234);
    EXPECT_EQ(component.error.Saved().source, u"KWOMonthView.Create");
    EXPECT_EQ(component.error.Saved().description, u"Refused");
}

TEST_F(MonthView, TheControlsWindowIsReadWithTheNotificationArgument) {
    const auto control = desktop.MakeObject(u"UserControl", "control");
    control->SetProperty(u"hWnd", std::int32_t{5});
    control->logsReads = true;
    Create(On(2026, 11, 21), {.control = HostObjectRef(control)});
    EXPECT_TRUE(desktop.log.Starting("Get control").empty());
    Create(On(2026, 11, 21), {.notifyOnChange = false, .control = HostObjectRef(control)});
    EXPECT_EQ(desktop.log.Starting("Get control"), (Lines{"Get control.hWnd"}));
    control->SetProperty(u"hWnd", 4294967295.0);
    EXPECT_TRUE(Create(On(2026, 11, 21), {.notifyOnChange = false, .control = HostObjectRef(control)}));
    EXPECT_TRUE(Create(On(2026, 11, 21), {.notifyOnChange = true, .control = Text(u"no object")}));
}

TEST_F(MonthView, NothingHappensBeforeItIsCreated) {
    view->MouseDown(1, 100, 100);
    view->MouseMove(100, 100);
    view->MouseUp();
    view->DblClick();
    view->Resize();
    view->SelDaysAdd(On(2026, 11, 21));
    view->SelDaysRemove(On(2026, 11, 21));
    std::int16_t key = 40;
    view->KeyDown(key);
    view->SelDaysClear();
    view->SetDayBevel(1);
    EXPECT_EQ(view->DayBevel(), 1);
    EXPECT_EQ(view->SelDay(), Date{});
    EXPECT_EQ(TakeLog(), Lines{});
}

TEST_F(MonthView, NothingHappensAfterASecondCreateThatRaised) {
    Ready(On(2026, 11, 21), {.canMultiSelect = true});
    box->FailMember(u"Parent", Refusal());
    EXPECT_FALSE(Create(On(2026, 11, 21), {.canMultiSelect = true}));
    box->MendMember(u"Parent");
    desktop.log.Clear();
    Click(2026, 11, 5);
    view->Resize();
    view->SelDaysAdd(On(2026, 11, 5));
    EXPECT_EQ(TakeLog(), Lines{});
    EXPECT_FALSE(view->IsSelected(On(2026, 11, 5)));
}

TEST_F(MonthView, NothingHappensAfterAFailedSecondCreate) {
    Ready(On(2026, 11, 21), {.canMultiSelect = true});
    view->DblClick();
    box->FailMember(u"Refresh", Refusal());
    EXPECT_FALSE(Create(On(2026, 11, 21), {.canMultiSelect = true}));
    box->MendMember(u"Refresh");
    desktop.log.Clear();
    Click(2026, 11, 5);
    view->MouseMove(10 * 15, 10 * 15);
    view->DblClick();
    view->Resize();
    view->SelDaysAdd(On(2026, 11, 5));
    EXPECT_EQ(TakeLog(), Lines{});
    EXPECT_FALSE(view->IsSelected(On(2026, 11, 5)));
}

TEST_F(MonthView, TheSelectionIsEmptiedAlsoAfterAFailedCreate) {
    Ready(On(2026, 11, 21), {.canMultiSelect = true});
    box->FailMember(u"Refresh", Refusal());
    EXPECT_FALSE(Create(On(2026, 11, 21), {.canMultiSelect = true}));
    Key(32);
    EXPECT_TRUE(view->IsSelected(On(2026, 11, 21)));
    view->SelDaysClear();
    EXPECT_FALSE(view->IsSelected(On(2026, 11, 21)));
    EXPECT_EQ(view->SelDay(), Date{});
}

TEST_F(MonthView, NothingHappensAfterACreateWithoutMemory) {
    for (const bool isSecond : {false, true}) {
        view.emplace(component);
        if (isSecond) Ready(On(2026, 11, 21), {.canMultiSelect = true});
        desktop.FailCall("VariantChangeType", 1, platform::simulated::Faults::kNoMemory);
        EXPECT_THROW(Create(On(2026, 11, 21), {.selDate = On(2026, 11, 24), .canMultiSelect = true}), std::bad_alloc);
        desktop.log.Clear();
        Click(2026, 11, 5);
        view->Resize();
        view->SelDaysAdd(On(2026, 11, 5));
        EXPECT_EQ(TakeLog(), Lines{});
        EXPECT_FALSE(view->IsSelected(On(2026, 11, 5)));
        EXPECT_TRUE(Create(On(2026, 11, 21)));
    }
}

using ShowMonthTest = MonthView;

TEST_F(ShowMonthTest, MovesTheFocusToTheFirstDay) {
    Ready(On(2026, 11, 21));
    view->ShowMonth(3, 2027);
    EXPECT_EQ(Visible(), IntPair(3, 2027));
    EXPECT_EQ(Drawings(), 1u);
    std::int16_t left = 37;
    view->KeyDown(left);
    EXPECT_EQ(Visible(), IntPair(2, 2027)) << "the day before the first";
}

TEST_F(ShowMonthTest, TheSameMonthKeepsTheFocus) {
    Ready(On(2026, 11, 21));
    view->ShowMonth(11, 2026);
    EXPECT_EQ(Drawings(), 1u);
    std::int16_t down = 40;
    view->KeyDown(down);
    EXPECT_EQ(Visible(), IntPair(11, 2026)) << "the 28th";
}

TEST_F(ShowMonthTest, MonthsRunOnIntoTheNextYear) {
    Ready(On(2026, 11, 21));
    view->ShowMonth(13, 2026);
    EXPECT_EQ(Visible(), IntPair(1, 2027));
    EXPECT_EQ(Raised([&] { view->ShowMonth(1, 99); }).number, 5);
    EXPECT_EQ(Raised([&] { view->ShowMonth(32'767, 32'767); }).number, 5);
    EXPECT_EQ(Visible(), IntPair(1, 2027));
}

using BeforeCreateIntended = MonthView;

TEST_F(BeforeCreateIntended, ShowMonthStoresTheMonthAndMissesTheBox) {
    // A reader would expect either an error that changes nothing or a month that is shown later.
    EXPECT_EQ(Raised([&] { view->ShowMonth(3, 2027); }).number, 91);
    EXPECT_EQ(Visible(), IntPair(3, 2027));
}

TEST_F(BeforeCreateIntended, MinDateStoresTheLimitAndMissesTheBox) {
    EXPECT_EQ(Raised([&] { view->SetMinDate({On(2027, 2, 15).days + 0.5}); }).number, 91);
    EXPECT_EQ(view->MinDate(), On(2027, 2, 15));
    EXPECT_EQ(Visible(), IntPair(2, 2027));
    KWOMonthView fresh(component);
    EXPECT_EQ(Raised([&] { fresh.SetMinDate({0}); }).number, 91) << "also for no limit";
    EXPECT_EQ(fresh.MinDate(), Date{});
    EXPECT_TRUE(Create(On(2026, 11, 21)));
    Key(33);
    EXPECT_EQ(Visible(), IntPair(11, 2026)) << "what was stored counts from then on";
    Key(34);
    Key(34);
    Key(34);
    EXPECT_EQ(Visible(), IntPair(11, 2026)) << "nor can the limit be reached from below";
}

TEST_F(BeforeCreateIntended, MaxDateStoresTheLimitWithoutAnError) {
    for (const Date limit : {On(2026, 12, 24), Date{0}}) {
        KWOMonthView fresh(component);
        EXPECT_EQ(Raised([&] { fresh.SetMaxDate(limit); }).number, 0);
        EXPECT_EQ(fresh.MaxDate(), limit);
    }
    view->SetMaxDate(On(2026, 12, 24));
    EXPECT_TRUE(Create(On(2026, 12, 1)));
    Key(34);
    EXPECT_EQ(Visible(), IntPair(12, 2026));
}

TEST_F(ShowMonthTest, TheCaptionIsPaintedFirst) {
    Ready(On(2026, 11, 21));
    view->ShowMonth(3, 2027);
    const Lines lines = TakeLog();
    // (24,5,109,23) in twips, button face
    EXPECT_EQ(lines[0], "Call box.Line 38,360,75,1635,345,-2147483633");
    EXPECT_EQ(lines[1], "DrawText 77 \"March, 2027\" (24,5,109,23) 0x8025");
    EXPECT_EQ(lines[2], "DrawEdge 77 (24,5,109,23) 9 0x480f");
}

class MonthChange : public MonthView {
protected:
    void Ask(KWOMonthView::CreateOptions options = {.notifyOnChange = true, .canChange = true}) {
        Ready(On(2026, 11, 21), std::move(options));
    }
};

TEST_F(MonthChange, TheFormIsAskedWithTheNewMonth) {
    Ask();
    Key(34);
    EXPECT_EQ(Notifications(), (Lines{"Call form.OnChangeMonth <PictureBox>,12,2026,False"}));
    EXPECT_EQ(Visible(), IntPair(12, 2026));
    view->ShowMonth(6, 2025);
    EXPECT_EQ(Notifications().back(), "Call form.OnChangeMonth <PictureBox>,6,2025,False");
}

TEST_F(MonthChange, TheFormMayRefuse) {
    Ask();
    onMonth = Cancel;
    Key(34);
    EXPECT_EQ(Visible(), IntPair(11, 2026));
    EXPECT_EQ(Drawings(), 0u);
}

using RefusedMonthIntended = MonthChange;

TEST_F(RefusedMonthIntended, ShowMonthLeavesThePictureOfOneMonthAndTheValuesOfAnother) {
    Ask();
    onMonth = Cancel;
    view->ShowMonth(3, 2027);
    EXPECT_EQ(TakeLog(), (Lines{"Call form.OnChangeMonth <PictureBox>,3,2027,False"})) << "still November 2026";
    EXPECT_EQ(Visible(), IntPair(3, 2027)) << "a reader would expect the month that is seen";
    view->Resize();
    EXPECT_EQ(desktop.log.Starting("DrawText").front(), "DrawText 77 \"March, 2027\" (24,5,109,23) 0x8025");

    Ready(On(2026, 11, 21));
    view->SetMaxDate(On(2026, 11, 30));
    desktop.log.Clear();
    view->ShowMonth(3, 2027);
    EXPECT_EQ(TakeLog(), Lines{}) << "limits refuse in the same way";
    EXPECT_EQ(Visible(), IntPair(3, 2027));
}

TEST_F(MonthChange, LimitsRefuseBeforeTheFormIsAsked) {
    Ask();
    view->SetMinDate(On(2026, 11, 1));
    view->SetMaxDate(On(2026, 11, 30));
    desktop.log.Clear();
    Key(33);
    Key(34);
    EXPECT_EQ(TakeLog(), Lines{});
}

TEST_F(MonthChange, AFormWithoutTheProcedureRefusesNothing) {
    form = desktop.MakeObject(u"Form", "form");
    box->SetProperty(u"Parent", HostObjectRef(form));
    Ask();
    Key(34);
    EXPECT_EQ(Visible(), IntPair(12, 2026));
    box->SetProperty(u"Parent", HostObjectRef());
    Ask();
    Key(34);
    EXPECT_EQ(Visible(), IntPair(12, 2026));
}

TEST_F(MonthChange, AProcedureThatFailsRefusesNothing) {
    Ask();
    onMonth = [](std::span<Variant> given) {
        given.back() = true;
        platform::Raise(1234, u"", u"broken");
    };
    Key(34);
    EXPECT_EQ(Visible(), IntPair(12, 2026));
    onMonth = [](std::span<Variant> given) { given.back() = Text(u"perhaps"); };
    Key(34);
    EXPECT_EQ(Visible(), IntPair(1, 2027));
}

TEST_F(MonthChange, NobodyIsAskedUnlessWanted) {
    Ask({.canChange = true});
    onMonth = Cancel;
    Key(34);
    EXPECT_EQ(Notifications(), Lines{});
    EXPECT_EQ(Visible(), IntPair(12, 2026));
}

TEST_F(MonthChange, TheDayIsKeptOrTheLastOne) {
    Ready(On(2026, 1, 31));
    Key(34);
    EXPECT_EQ(Visible(), IntPair(2, 2026));
    Key(34);
    Click(2026, 3, 1);
    EXPECT_EQ(desktop.log.Starting("Call form.OnChangeDate").size(), 1u);
}

TEST_F(MonthChange, AFormMayDestroyTheBox) {
    Ask();
    onMonth = [&](std::span<Variant>) {
        for (const TextView member : {u"hDC", u"Line", u"Refresh", u"ForeColor", u"Font", u"Cls"})
            box->FailMember(member, Refusal(91));
    };
    EXPECT_EQ(Raised([&] { Key(34); }).number, 91);
    EXPECT_EQ(Visible(), IntPair(12, 2026));
    EXPECT_EQ(Raised([&] { view->MouseUp(); }).number, 91);
}

TEST_F(MonthChange, AFormMayChangeTheMonthWhileItIsAsked) {
    Ask();
    int depth = 0;
    onMonth = [&](std::span<Variant>) {
        if (++depth == 1) view->ShowMonth(5, 2030);
    };
    Key(34);
    EXPECT_EQ(Visible(), IntPair(12, 2026)) << "the outer change comes last";
}

using DateLimits = MonthView;

TEST_F(DateLimits, AreWholeMonths) {
    Ready(On(2026, 11, 21));
    view->SetMinDate(On(2026, 10, 20));
    view->SetMaxDate({On(2027, 1, 10).days + 0.9});
    EXPECT_EQ(view->MinDate(), On(2026, 10, 20));
    EXPECT_EQ(view->MaxDate(), On(2027, 1, 10));
    EXPECT_EQ(Visible(), IntPair(11, 2026));
    for (const int expected : {10, 10})
        EXPECT_EQ((Key(33), view->VisibleMonth()), expected);
    for (const int expected : {11, 12, 1, 1})
        EXPECT_EQ((Key(34), view->VisibleMonth()), expected);
}

TEST_F(DateLimits, AMinimumAfterTheVisibleMonthMovesThere) {
    Ready(On(2026, 11, 21));
    view->SetMinDate(On(2027, 2, 15));
    EXPECT_EQ(Visible(), IntPair(2, 2027));
    EXPECT_EQ(Drawings(), 1u);
    desktop.log.Clear();
    view->SetMinDate(On(2027, 2, 28));
    EXPECT_EQ(Drawings(), 0u) << "its own month is not earlier";
    view->SetMinDate({0});
    view->SetMinDate({-5});
    EXPECT_EQ(view->MinDate(), Date{-5});
    EXPECT_EQ(Visible(), IntPair(2, 2027));
    Key(33);
    EXPECT_EQ(Visible(), IntPair(1, 2027));
}

TEST_F(DateLimits, TheFirstDayOfTheCenturyIsALimitAsWell) {
    Ready(On(2026, 11, 21));
    view->SetMaxDate({1});
    EXPECT_EQ(Visible(), IntPair(12, 1899));
    Key(34);
    EXPECT_EQ(Visible(), IntPair(12, 1899));
}

TEST_F(DateLimits, ZeroIsNoLimit) {
    Ready(On(2026, 11, 21));
    view->SetMinDate({0});
    view->ShowMonth(1, 1850);
    EXPECT_EQ(Drawings(), 1u) << "before the date 0";
    view->SetMaxDate({0});
    EXPECT_EQ(Visible(), IntPair(1, 1850)) << "a month that is before any maximum";
    desktop.log.Clear();
    view->ShowMonth(1, 2027);
    EXPECT_EQ(Drawings(), 1u) << "after the date 0";
}

TEST_F(DateLimits, SelDaysAddKnowsNoLimits) {
    Ready(On(2026, 11, 21));
    view->SetMinDate(On(2026, 11, 1));
    view->SelDaysAdd(On(2020, 1, 1));
    EXPECT_TRUE(view->IsSelected(On(2020, 1, 1)));
}

TEST_F(DateLimits, ClicksKnowNoLimitsInsideTheMonth) {
    Ready(On(2026, 11, 21));
    view->SetMinDate(On(2026, 11, 20));
    Click(2026, 11, 3);
    EXPECT_TRUE(view->IsSelected(On(2026, 11, 3)));
}

TEST_F(DateLimits, WhatIsNoDateIsRefused) {
    Ready(On(2026, 11, 21));
    for (const double days : {3e6, -1e6, std::nan(""), 1e300}) {
        EXPECT_EQ(Raised([&] { view->SetMinDate({days}); }).number, 5);
        EXPECT_EQ(Raised([&] { view->SetMaxDate({days}); }).number, 5);
    }
    EXPECT_EQ(view->MinDate(), Date{});
    EXPECT_EQ(Visible(), IntPair(11, 2026));
}

using MaxDateIntended = MonthView;

TEST_F(MaxDateIntended, ActsInItsOwnMonthAlsoWhereThatHas31Days) {
    Ready(On(2026, 1, 20));
    view->SetMaxDate(On(2026, 1, 31));
    EXPECT_EQ(Drawings(), 1u);
    desktop.log.Clear();
    view->SetMaxDate(On(2026, 2, 1));
    EXPECT_EQ(Drawings(), 0u);
}

TEST_F(MaxDateIntended, ActsInTheMaximumsOwnMonth) {
    Ready(On(2026, 11, 21));
    view->SetMaxDate(On(2026, 11, 5));
    EXPECT_EQ(Drawings(), 1u);
    EXPECT_EQ(desktop.log.Starting("DrawFocusRect"), (Lines{"DrawFocusRect 77 (78,56,92,75)"})) << "the 5th";
    desktop.log.Clear();
    view->SetMaxDate(On(2026, 12, 5));
    EXPECT_EQ(Drawings(), 0u);
    view->SetMaxDate(On(2026, 10, 5));
    EXPECT_EQ(Visible(), IntPair(10, 2026));
}

TEST_F(MaxDateIntended, ClearingItMovesTheFocusToTheZeroDate) {
    Ready(On(2026, 11, 21));
    view->SetMaxDate({0});
    EXPECT_EQ(Visible(), IntPair(12, 1899));
    EXPECT_EQ(Drawings(), 1u);
    Ready(On(2026, 11, 21));
    view->SetMinDate(On(2026, 1, 1));
    desktop.log.Clear();
    view->SetMaxDate({0});
    EXPECT_EQ(Visible(), IntPair(12, 1899)) << "also where the minimum refuses to show it";
    EXPECT_EQ(Drawings(), 0u);
}

using SpinIntervalIntended = MonthView;

TEST_F(SpinIntervalIntended, EveryNumberIsTaken) {
    for (const std::int16_t interval : std::initializer_list<std::int16_t>{5000, 1, 1000, 0, -5}) {
        EXPECT_TRUE(Create(On(2026, 11, 21), {.spinInterval = interval}));
        desktop.clock.msPerReading = 1;
        desktop.PostAt(interval > 1000 ? 5500 : 40, [&] { view->MouseUp(); });
        const int before = view->VisibleMonth() + 12 * view->VisibleYear();
        view->MouseDown(1, 115 * 15, 10 * 15);
        const int steps = view->VisibleMonth() + 12 * view->VisibleYear() - before;
        if (interval == 5000) {
            EXPECT_EQ(steps, 2);
        }
        if (interval == 1000) {
            EXPECT_EQ(steps, 1);
        }
        if (interval <= 1) {
            EXPECT_GT(steps, 5) << interval;
        }
    }
}

using NotificationIntended = MonthView;

TEST_F(NotificationIntended, DateChangesAreToldWhateverTheSwitchSays) {
    Ready(On(2026, 11, 21), {.notifyOnChange = false, .canChange = true});
    Click(2026, 11, 5);
    Key(13);
    EXPECT_EQ(Notifications(), (Lines{"Call form.OnChangeDate <PictureBox>,Date 46331,False",
                                      "Call form.OnChangeDate <PictureBox>,Date 46331,False"}));
}

class DaySelection : public MonthView {};

TEST_F(DaySelection, OneDayReplacesTheFocusDay) {
    Ready(On(2026, 11, 21), {.selDate = On(2026, 11, 21), .canChange = true});
    Click(2026, 11, 5);
    EXPECT_FALSE(view->IsSelected(On(2026, 11, 21)));
    EXPECT_TRUE(view->IsSelected(On(2026, 11, 5)));
    Click(2026, 11, 5);
    EXPECT_TRUE(view->IsSelected(On(2026, 11, 5)));
}

TEST_F(DaySelection, ADayThatIsNotTheFocusStays) {
    Ready(On(2026, 11, 21), {.selDate = On(2026, 11, 3), .canChange = true});
    Click(2026, 11, 5);
    EXPECT_TRUE(view->IsSelected(On(2026, 11, 3)));
    EXPECT_TRUE(view->IsSelected(On(2026, 11, 5)));
}

TEST_F(DaySelection, ManyDaysAreToggled) {
    Ready(On(2026, 11, 21), {.canMultiSelect = true});
    Click(2026, 11, 5);
    Click(2026, 11, 6);
    EXPECT_TRUE(view->IsSelected(On(2026, 11, 5)));
    EXPECT_TRUE(view->IsSelected(On(2026, 11, 6)));
    Click(2026, 11, 5);
    EXPECT_FALSE(view->IsSelected(On(2026, 11, 5)));
    EXPECT_EQ(view->SelDay(), On(2026, 11, 6));
}

TEST_F(DaySelection, TheFormMayRefuse) {
    Ready(On(2026, 11, 21), {.selDate = On(2026, 11, 21), .canChange = true});
    onDate = Cancel;
    const auto [x, y] = PlaceOf(2026, 11, 5);
    view->MouseDown(1, x, y);
    EXPECT_EQ(TakeLog(), (Lines{"Call form.OnChangeDate <PictureBox>,Date 46331,False"})) << "no redraw";
    EXPECT_TRUE(view->IsSelected(On(2026, 11, 21)));
    // The focus day was set before the answer came.
    view->Resize();
    EXPECT_EQ(desktop.log.Starting("DrawFocusRect"), (Lines{"DrawFocusRect 77 (78,56,92,75)"}));
}

TEST_F(DaySelection, AnEmptyCellOnlyRedraws) {
    Ready(On(2026, 11, 21));
    Click(2026, 11, 31);
    EXPECT_EQ(Notifications(), Lines{});
    EXPECT_EQ(Drawings(), 1u);
    desktop.log.Clear();
    view->MouseDown(1, 60 * 15, 35 * 15);  // a day header
    EXPECT_EQ(Notifications(), Lines{});
    EXPECT_EQ(Drawings(), 1u);
}

TEST_F(DaySelection, WithoutTheRightNothingIsClicked) {
    Ready(On(2026, 11, 21), {});
    const auto [x, y] = PlaceOf(2026, 11, 5);
    view->MouseDown(1, x, y);
    EXPECT_EQ(TakeLog(), Lines{});
    view->SetCanSelect(true);
    view->MouseDown(1, x, y);
    EXPECT_TRUE(view->IsSelected(On(2026, 11, 5)));
}

TEST_F(DaySelection, OtherButtonsClickNothing) {
    Ready(On(2026, 11, 21));
    const auto [x, y] = PlaceOf(2026, 11, 5);
    for (const std::int16_t button : std::initializer_list<std::int16_t>{0, 2, 3, 4})
        view->MouseDown(button, x, y);
    EXPECT_EQ(TakeLog(), Lines{});
}

TEST_F(DaySelection, EveryPixelHitsTheCellThatIsDrawnThere) {
    Ready(On(2026, 11, 21), {.canMultiSelect = true});
    // Only the clicks matter here; twenty thousand drawings would take most of the time.
    box->FailMember(u"Font", Refusal());
    const MonthLayout layout = MonthLayout::Of(195, 2000, 3000, {15, 15});
    for (std::int32_t y = 50; y < 200; ++y) {
        for (std::int32_t x = 0; x < 134; ++x) {
            unsigned expected = 0;
            for (unsigned column = 0; column < 7; ++column) {
                for (unsigned row = 0; row < 6; ++row) {
                    const Rect& cell = layout.dayCells[column * 6 + row];
                    const unsigned day = row * 7 + column + 1;  // the 1st is a Sunday
                    if (x >= cell.left && x < cell.right && y >= cell.top && y < cell.bottom && day <= 30)
                        expected = day;
                }
            }
            desktop.log.Clear();
            view->MouseDown(1, static_cast<float>(x * 15), static_cast<float>(y * 15));
            const Lines told = Notifications();
            if (expected == 0) {
                ASSERT_EQ(told, Lines{}) << x << ',' << y;
            } else {
                ASSERT_EQ(told, (Lines{"Call form.OnChangeDate <PictureBox>,Date " +
                                       std::to_string(static_cast<int>(On(2026, 11, expected).days)) + ",False"}))
                    << x << ',' << y;
            }
        }
    }
}

TEST_F(DaySelection, AddingTwiceKeepsOneAndRedraws) {
    Ready(On(2026, 11, 21));
    view->SelDaysAdd(On(2026, 11, 5));
    EXPECT_EQ(TakeLog(), Lines{});
    view->SelDaysAdd({On(2026, 11, 5).days + 0.4});
    EXPECT_EQ(Drawings(), 1u);
    view->SelDaysRemove(On(2026, 11, 5));
    EXPECT_EQ(view->SelDay(), Date{});
    EXPECT_TRUE((view->SelDaysRemove(On(2026, 11, 5)), true));
    view->SelDaysAdd({1e300});
    view->SelDaysRemove({1e300});
    EXPECT_FALSE(view->IsSelected({1e300}));
}

TEST_F(DaySelection, ATimeInTheEveningIsTheNextDay) {
    Ready(On(2026, 11, 21));
    view->SelDaysAdd(On(2026, 11, 6));
    EXPECT_TRUE(view->IsSelected({On(2026, 11, 5).days + 0.75}));
    EXPECT_FALSE(view->IsSelected({On(2026, 11, 5).days + 0.25}));
}

TEST_F(DaySelection, RemovingADayRedrawsNothing) {
    Ready(On(2026, 11, 21), {.selDate = On(2026, 11, 5), .canChange = true});
    view->SelDaysRemove(On(2026, 11, 5));
    EXPECT_EQ(TakeLog(), Lines{});
    EXPECT_FALSE(view->IsSelected(On(2026, 11, 5)));
}

TEST_F(DaySelection, ADoubleClickRepeatsItsLastButton) {
    Ready(On(2026, 11, 21), {.canMultiSelect = true});
    Click(2026, 11, 5);
    const auto [x, y] = PlaceOf(2026, 11, 5);
    view->MouseDown(2, x, y);
    view->MouseUp();
    view->DblClick();
    EXPECT_TRUE(view->IsSelected(On(2026, 11, 5))) << "it was the right one";
    EXPECT_EQ(Notifications().size(), 1u);
}

TEST_F(DaySelection, AHandlerMayClickAndResizeWhileItIsAsked) {
    Ready(On(2026, 11, 21), {.canMultiSelect = true});
    int depth = 0;
    onDate = [&](std::span<Variant>) {
        if (++depth == 1) {
            Click(2026, 11, 6);
            view->Resize();
            view->SelDaysClear();
        }
    };
    Click(2026, 11, 5);
    EXPECT_TRUE(view->IsSelected(On(2026, 11, 5)));
    EXPECT_FALSE(view->IsSelected(On(2026, 11, 6)));
}

TEST_F(DaySelection, EveryCellThatHasThePointIsClicked) {
    Ready(On(2026, 11, 21), {.canMultiSelect = true});
    int asked = 0;
    onDate = [&](std::span<Variant>) {
        if (++asked > 1) return;
        // The point is now in the third week.
        box->SetProperty(u"Height", 1500.0f);
        view->Resize();
    };
    Click(2026, 11, 5);
    EXPECT_EQ(asked, 2);
    EXPECT_TRUE(view->IsSelected(On(2026, 11, 5)));
    EXPECT_TRUE(view->IsSelected(On(2026, 11, 19)));
}

TEST_F(DaySelection, AHandlerMayShowAnotherMonthWhileItIsAsked) {
    Ready(On(2026, 11, 21));
    onDate = [&](std::span<Variant>) { view->ShowMonth(5, 2030); };
    Click(2026, 11, 5);
    EXPECT_TRUE(view->IsSelected(On(2026, 11, 5)));
    EXPECT_EQ(Visible(), IntPair(5, 2030)) << "the month that was shown last";
    desktop.log.Clear();
    view->Resize();
    EXPECT_EQ(desktop.log.Starting("DrawText").front(), "DrawText 77 \"November, 2026\" (24,5,109,23) 0x8025")
        << "the month of the focus";
    EXPECT_EQ(desktop.log.Starting("DrawFocusRect"), (Lines{"DrawFocusRect 77 (78,56,92,75)"})) << "its 5th";
}

class SpinButtons : public MonthView {
protected:
    static constexpr float kPrevious = 10 * 15;
    static constexpr float kNext = 115 * 15;
    static constexpr float kInside = 10 * 15;

    SpinButtons() {
        Ready(On(2026, 11, 21), {});
        desktop.clock.msPerReading = 1;
    }
    Lines Buttons() const { return desktop.log.Starting("DrawFrameControl"); }
};

TEST_F(SpinButtons, AShortPressStepsOnce) {
    desktop.Post([&] { view->MouseUp(); });
    view->MouseDown(1, kNext, kInside);
    EXPECT_EQ(Visible(), IntPair(12, 2026));
    EXPECT_EQ(Buttons(),
              (Lines{"DrawFrameControl 77 (110,4,129,23) 3 0x203", "DrawFrameControl 77 (110,4,129,23) 3 0x3"}));
    desktop.Post([&] { view->MouseUp(); });
    view->MouseDown(1, kPrevious, kInside);
    EXPECT_EQ(Visible(), IntPair(11, 2026));
    EXPECT_EQ(Buttons().back(), "DrawFrameControl 77 (4,4,23,23) 3 0x2");
}

TEST_F(SpinButtons, AHeldButtonRepeats) {
    desktop.PostAt(1000, [&] { view->MouseUp(); });
    view->MouseDown(1, kNext, kInside);
    // At once, and at 150, 300 ... 900.
    EXPECT_EQ(Visible(), IntPair(6, 2027));
}

TEST_F(SpinButtons, TheUsualIntervalIs150) {
    const auto steps = [&](KWOMonthView::CreateOptions options) {
        Ready(On(2026, 11, 21), std::move(options));
        desktop.PostAt(60'000, [&] { view->MouseUp(); });
        view->MouseDown(1, kNext, kInside);
        return view->VisibleMonth() + 12 * view->VisibleYear();
    };
    EXPECT_EQ(steps({}), steps({.spinInterval = std::int16_t{150}}));
    EXPECT_NE(steps({}), steps({.spinInterval = std::int16_t{151}}));
}

TEST_F(SpinButtons, ALayoutRaisesBothButtonsUntilThePointerMoves) {
    for (const float button : {kPrevious, kNext}) {
        Ready(On(2026, 11, 21), {});
        desktop.PostAt(50, [&] { view->Resize(); });
        desktop.PostAt(500, [&] { view->MouseUp(); });
        view->MouseDown(1, button, kInside);
        EXPECT_EQ(view->VisibleMonth(), button == kNext ? 12 : 10);
    }
}

TEST_F(SpinButtons, OffTheButtonTheStepsStopAndGoOnWhenItIsBack) {
    desktop.PostAt(200, [&] { view->MouseMove(60 * 15, kInside); });
    desktop.PostAt(700, [&] { view->MouseMove(kNext, kInside); });
    desktop.PostAt(1000, [&] { view->MouseUp(); });
    view->MouseDown(1, kNext, kInside);
    // 0, 150, then off it from 200 to 700, then 750, 900.
    EXPECT_EQ(Visible(), IntPair(3, 2027));
    EXPECT_EQ(Buttons(),
              (Lines{"DrawFrameControl 77 (110,4,129,23) 3 0x203", "DrawFrameControl 77 (110,4,129,23) 3 0x3",
                     "DrawFrameControl 77 (110,4,129,23) 3 0x203", "DrawFrameControl 77 (110,4,129,23) 3 0x3"}));
}

TEST_F(SpinButtons, AMovementOffAndOntoTheButtonShowsAtOnce) {
    desktop.PostAt(10, [&] {
        desktop.log.Clear();
        view->MouseMove(60 * 15, kInside);
        EXPECT_EQ(TakeLog(), (Lines{"DrawFrameControl 77 (110,4,129,23) 3 0x3", "Call box.Refresh"}));
        view->MouseMove(kNext, kInside);
        EXPECT_EQ(TakeLog(), (Lines{"DrawFrameControl 77 (110,4,129,23) 3 0x203", "Call box.Refresh"}));
        view->MouseUp();
    });
    view->MouseDown(1, kNext, kInside);
}

TEST_F(SpinButtons, AReleaseDrawsTheButtonAndTheCalendar) {
    desktop.PostAt(10, [&] {
        desktop.log.Clear();
        view->MouseUp();
    });
    view->MouseDown(1, kNext, kInside);
    EXPECT_EQ(Drawings(), 1u);
    EXPECT_EQ(desktop.log.Starting("Call box.Refresh").size(), 2u);
    const Lines lines = TakeLog();
    EXPECT_EQ(lines.front(), "DrawFrameControl 77 (110,4,129,23) 3 0x3");
    EXPECT_EQ(lines.back(), "Call box.Refresh");
}

TEST_F(SpinButtons, TheNextStepIsCountedFromTheEndOfTheLast) {
    Ready(On(2026, 11, 21), {.notifyOnChange = true});
    desktop.clock.msPerReading = 0;
    onMonth = [&](std::span<Variant>) { desktop.Advance(100); };
    desktop.PostAt(900, [&] { view->MouseUp(); });
    view->MouseDown(1, kNext, kInside);
    // At once, and at 250, 500 and 750.
    EXPECT_EQ(Visible(), IntPair(3, 2027));
}

TEST_F(SpinButtons, AMovementThatChangesNothingDrawsNothing) {
    desktop.PostAt(10, [&] {
        desktop.log.Clear();
        view->MouseMove(kNext + 15, kInside);
        EXPECT_EQ(TakeLog(), Lines{});
        view->MouseUp();
    });
    view->MouseDown(1, kNext, kInside);
    desktop.log.Clear();
    view->MouseMove(kNext, kInside);
    EXPECT_EQ(TakeLog(), Lines{});
}

TEST_F(SpinButtons, TheEdgesOfTheButtonsCount) {
    const auto steps = [&](float x, float y) {
        const int before = view->VisibleMonth() + 12 * view->VisibleYear();
        desktop.Post([&] { view->MouseUp(); });
        view->MouseDown(1, x, y);
        desktop.messages.ProcessPending();
        return view->VisibleMonth() + 12 * view->VisibleYear() - before;
    };
    EXPECT_EQ(steps(4 * 15, 4 * 15), -1);
    EXPECT_EQ(steps(22 * 15, 22 * 15), -1);
    EXPECT_EQ(steps(3 * 15, 10 * 15), 0);
    EXPECT_EQ(steps(23 * 15, 10 * 15), 0);
    EXPECT_EQ(steps(10 * 15, 23 * 15), 0);
    EXPECT_EQ(steps(110 * 15, 4 * 15), 1);
    EXPECT_EQ(steps(128 * 15, 22 * 15), 1);
    EXPECT_EQ(steps(129 * 15, 10 * 15), 0);
    EXPECT_EQ(steps(109 * 15, 10 * 15), 0);
}

TEST_F(SpinButtons, TheRightButtonOnlyStoresThePlace) {
    view->MouseDown(2, kNext, kInside);
    EXPECT_EQ(TakeLog(), Lines{});
    EXPECT_EQ(Visible(), IntPair(11, 2026));
}

TEST_F(SpinButtons, ADoubleClickStepsAgainAndTheNextMovementReleases) {
    desktop.Post([&] { view->MouseUp(); });
    view->MouseDown(1, kNext, kInside);
    desktop.PostAt(10, [&] { view->MouseUp(); });
    view->DblClick();
    EXPECT_EQ(Visible(), IntPair(1, 2027));
    desktop.log.Clear();
    view->MouseMove(kNext, kInside);
    EXPECT_EQ(TakeLog(), (Lines{"Call box.Refresh"}));
    view->MouseMove(kNext, kInside);
    EXPECT_EQ(TakeLog(), Lines{});
}

TEST_F(SpinButtons, AReleaseAlwaysRefreshes) {
    view->MouseUp();
    EXPECT_EQ(TakeLog(), (Lines{"Call box.Refresh"}));
}

TEST_F(SpinButtons, AnErrorInAStepEndsThePress) {
    box->FailMember(u"Line", Refusal());
    EXPECT_EQ(Raised([&] { view->MouseDown(1, kNext, kInside); }).number, 380);
    box->MendMember(u"Line");
    desktop.Post([&] { view->MouseUp(); });
    view->MouseDown(1, kNext, kInside);
    EXPECT_EQ(Visible(), IntPair(1, 2027));
}

TEST_F(SpinButtons, AnErrorInAnEventEndsThePress) {
    desktop.PostAt(10, [] { platform::Raise(77, u"", u"out of an event"); });
    EXPECT_EQ(Raised([&] { view->MouseDown(1, kNext, kInside); }).number, 77);
}

TEST_F(SpinButtons, AProgramThatEndsGetsNoRelease) {
    desktop.PostAt(10, [&] { desktop.messages.RequestQuit(); });
    view->MouseDown(1, kNext, kInside);
    EXPECT_EQ(Visible(), IntPair(12, 2026));
}

TEST_F(SpinButtons, ARefusedMonthStepsNoFurther) {
    Ready(On(2026, 11, 21), {.notifyOnChange = true});
    onMonth = [](std::span<Variant> given) { given.back() = std::get<std::int16_t>(given[1]) == 1; };
    desktop.PostAt(1000, [&] { view->MouseUp(); });
    view->MouseDown(1, kNext, kInside);
    EXPECT_EQ(Visible(), IntPair(12, 2026));
}

/// Presses whose release may get lost. A release comes in any case, much later.
class HeldButton : public SpinButtons {
protected:
    static constexpr std::int64_t kMuchLater = 60'000;

    HeldButton() {
        Ready(On(2026, 11, 21), {.notifyOnChange = true});
        desktop.windows.windows[kWindow] = {};
        desktop.PostAt(kMuchLater, [this] { view->MouseUp(); });
    }
    /// Holds the arrow for this many milliseconds.
    std::int64_t Held() {
        const std::int64_t before = desktop.clock.Elapsed().scaled;
        view->MouseDown(1, kNext, kInside);
        return (desktop.clock.Elapsed().scaled - before) / platform::Milliseconds::kScale;
    }
};

TEST_F(HeldButton, EndsWithTheWindowOfItsBox) {
    desktop.PostAt(200, [&] {
        desktop.windows.windows.clear();
        desktop.log.Clear();
    });
    EXPECT_LT(Held(), 250);
    EXPECT_EQ(TakeLog(), Lines{}) << "nothing is drawn on what is gone";
    EXPECT_EQ(Visible(), IntPair(1, 2027));
}

TEST_F(HeldButton, WaitsForItsReleaseWhereTheBoxHasNoWindow) {
    desktop.windows.windows.clear();
    EXPECT_GE(Held(), kMuchLater);
    desktop.windows.windows[kWindow] = {};
    box->FailMember(u"hWnd", Refusal());
    desktop.PostAt(1000, [&] { view->MouseUp(); });
    EXPECT_GE(Held(), 1000);
}

TEST_F(HeldButton, EndsWhenTheButtonIsUpAndNoMessageTellsIt) {
    desktop.mouse.isHeld = true;
    desktop.PostAt(160, [&] { desktop.mouse.isHeld = false; });
    EXPECT_LT(Held(), 290);
    EXPECT_EQ(Visible(), IntPair(1, 2027));
    EXPECT_EQ(Buttons().back(), "DrawFrameControl 77 (110,4,129,23) 3 0x3");
    EXPECT_EQ(desktop.log.Starting("Call box.Refresh").size(), 4u) << "two steps, and as at a release";
}

TEST_F(HeldButton, EndsWhenANotificationSwallowsTheRelease) {
    desktop.mouse.isHeld = true;
    onMonth = [&](std::span<Variant>) { desktop.mouse.isHeld = false; };
    EXPECT_LT(Held(), 150);
    EXPECT_EQ(Visible(), IntPair(12, 2026));
}

TEST_F(HeldButton, EndsWhenANotificationSwallowsTheReleaseOfAShortPress) {
    // The button was up again before its press arrived here.
    desktop.mouse.wasPressed = true;
    onMonth = [&](std::span<Variant>) { desktop.mouse.wasPressed = false; };
    EXPECT_LT(Held(), 150);
    EXPECT_EQ(Visible(), IntPair(12, 2026));
}

TEST_F(HeldButton, EndsWithACreateThatFails) {
    // From then on MouseUp does nothing.
    desktop.PostAt(2 * kMuchLater, [&] { desktop.messages.RequestQuit(); });
    onMonth = [&](std::span<Variant>) {
        box->FailMember(u"TextHeight", Refusal());
        EXPECT_FALSE(Create(On(2026, 11, 21)));
        box->MendMember(u"TextHeight");
    };
    EXPECT_LT(Held(), 150);
}

TEST_F(HeldButton, ItsOwnReleaseComesFirst) {
    desktop.mouse.isHeld = true;
    int releases = 0;
    onMonth = [&](std::span<Variant>) {
        desktop.mouse.isHeld = false;
        desktop.Post([&] {
            ++releases;
            view->MouseUp();
        });
    };
    EXPECT_LT(Held(), 150);
    EXPECT_EQ(releases, 1);
    EXPECT_EQ(desktop.log.Starting("Call box.Refresh").size(), 3u) << "of the step and of one release";
}

TEST_F(HeldButton, WithoutARealButtonItWaitsForItsRelease) {
    EXPECT_GE(Held(), kMuchLater);
}

TEST_F(HeldButton, OffTheArrowItEndsAsWell) {
    desktop.mouse.isHeld = true;
    desktop.PostAt(50, [&] { view->MouseMove(60 * 15, kInside); });
    desktop.PostAt(10'000, [&] { desktop.mouse.isHeld = false; });
    const std::int64_t held = Held();
    EXPECT_GE(held, 10'000);
    EXPECT_LT(held, 10'200);
    EXPECT_EQ(Visible(), IntPair(12, 2026));
}

TEST_F(HeldButton, WaitsForMessagesUntilTheNextStepIsDue) {
    desktop.clock.msPerReading = 0;
    desktop.PostAt(1000, [&] { view->MouseUp(); });
    EXPECT_EQ(Held(), 1000);
    EXPECT_EQ(Visible(), IntPair(6, 2027));
    EXPECT_LE(desktop.log.Starting("Pump").size(), 20u);
    EXPECT_EQ(desktop.log.Starting("WaitEx").front(), "WaitEx 100 mask=0xff flags=0x2");
}

TEST_F(SpinButtons, RepeatsAtNegativeTicksAndAcrossZero) {
    desktop.clock.msPerReading = 0;
    for (const std::uint32_t start : {0x80001000u, 0xFFFFFE0Cu}) {
        Ready(On(2026, 11, 21), {});
        desktop.clock.SetTickCount(start);
        // Between the step at 450, before the tick 0, and the one at 600 behind it.
        desktop.PostAt(470, [] {});
        desktop.PostAt(1000, [&] { view->MouseUp(); });
        view->MouseDown(1, kNext, kInside);
        EXPECT_EQ(Visible(), IntPair(6, 2027)) << start;
    }
}

using TicksIntended = SpinButtons;

TEST_F(TicksIntended, TheNextStepBeyondTheLargestTickOverflows) {
    desktop.clock.SetTickCount(0x7FFFFFFF - 100);
    EXPECT_EQ(Raised([&] { view->MouseDown(1, kNext, kInside); }).number, 6);
    view->MouseUp();
    desktop.clock.SetTickCount(0x7FFFFFFF - 1000);
    desktop.PostAt(100, [&] { view->MouseUp(); });
    EXPECT_EQ(Raised([&] { view->MouseDown(1, kNext, kInside); }).number, 0);
}

class Keys : public MonthView {};

TEST_F(Keys, ArrowsMoveTheFocus) {
    const auto focus = [&](std::int16_t code) {
        desktop.log.Clear();
        EXPECT_EQ(Key(code), code);
        EXPECT_EQ(Drawings(), 1u);
        EXPECT_EQ(Notifications(), Lines{});
        return desktop.log.Starting("DrawFocusRect").front();
    };
    Ready(On(2026, 11, 12), {});
    EXPECT_EQ(focus(37), "DrawFocusRect 77 (60,79,74,98)");  // 11
    EXPECT_EQ(focus(39), "DrawFocusRect 77 (78,79,92,98)");  // 12
    EXPECT_EQ(focus(38), "DrawFocusRect 77 (78,56,92,75)");  // 5
    EXPECT_EQ(focus(40), "DrawFocusRect 77 (78,79,92,98)");  // 12
    EXPECT_EQ(view->SelDay(), Date{}) << "nothing is selected";
}

TEST_F(Keys, ArrowsOverTheEdgeOfTheMonthChangeIt) {
    Ready(On(2026, 11, 28), {.notifyOnChange = true});
    Key(40);
    EXPECT_EQ(Visible(), IntPair(12, 2026));
    EXPECT_EQ(desktop.log.Starting("DrawFocusRect"), (Lines{"DrawFocusRect 77 (114,56,127,75)"})) << "the 5th";
    EXPECT_EQ(Notifications(), (Lines{"Call form.OnChangeMonth <PictureBox>,12,2026,False"}));
    onMonth = Cancel;
    Key(38);
    EXPECT_EQ(Visible(), IntPair(12, 2026));
}

TEST_F(Keys, TheLimitsHoldForArrows) {
    Ready(On(2026, 11, 28), {});
    view->SetMaxDate(On(2026, 11, 28));
    desktop.log.Clear();
    Key(40);
    EXPECT_EQ(Visible(), IntPair(11, 2026));
    EXPECT_EQ(Drawings(), 0u);
}

TEST_F(Keys, PagesChangeTheMonth) {
    Ready(On(2026, 11, 30), {});
    EXPECT_EQ(Key(34), 34);
    EXPECT_EQ(Visible(), IntPair(12, 2026));
    EXPECT_EQ(Key(33), 33);
    EXPECT_EQ(Key(33), 33);
    EXPECT_EQ(Visible(), IntPair(10, 2026));
}

TEST_F(Keys, EnterAndSpaceToggleTheFocusDay) {
    for (const std::int16_t code : std::initializer_list<std::int16_t>{13, 32}) {
        Ready(On(2026, 11, 12), {.selDate = On(2026, 11, 3), .canChange = true});
        EXPECT_EQ(Key(code), 0);
        EXPECT_TRUE(view->IsSelected(On(2026, 11, 12)));
        EXPECT_FALSE(view->IsSelected(On(2026, 11, 3))) << "one day alone";
        EXPECT_EQ(Key(code), 0);
        EXPECT_FALSE(view->IsSelected(On(2026, 11, 12)));
        EXPECT_EQ(Drawings(), 2u);
        Ready(On(2026, 11, 12), {.selDate = On(2026, 11, 3), .canMultiSelect = true});
        EXPECT_EQ(Key(code), 0);
        EXPECT_TRUE(view->IsSelected(On(2026, 11, 12)));
        EXPECT_TRUE(view->IsSelected(On(2026, 11, 3)));
    }
}

TEST_F(Keys, ARefusedToggleUsesTheKeyUp) {
    Ready(On(2026, 11, 12));
    onDate = Cancel;
    EXPECT_EQ(Key(13), 0);
    EXPECT_FALSE(view->IsSelected(On(2026, 11, 12)));
    EXPECT_EQ(Drawings(), 0u);
}

TEST_F(Keys, WithoutTheRightTheKeyIsNotUsed) {
    Ready(On(2026, 11, 12), {});
    EXPECT_EQ(Key(13), 13);
    EXPECT_EQ(Key(32), 32);
    EXPECT_EQ(TakeLog(), Lines{});
}

TEST_F(Keys, OtherKeysDoNothing) {
    Ready(On(2026, 11, 12));
    for (const std::int16_t code : std::initializer_list<std::int16_t>{0, 9, 27, 35, 36, 65, -1})
        EXPECT_EQ(Key(code), code);
    EXPECT_EQ(TakeLog(), Lines{});
}

TEST_F(Keys, WorkAsSoonAsThereIsAFocus) {
    KWOMonthView fresh(component);
    EXPECT_EQ(Raised([&] { fresh.ShowMonth(3, 2027); }).number, 91);
    std::int16_t down = 40;
    EXPECT_EQ(Raised([&] { fresh.KeyDown(down); }).number, 0) << "the 8th; what cannot be drawn is passed over";
    std::int16_t up = 38;
    fresh.KeyDown(up);
    std::int16_t left = 37;
    EXPECT_EQ(Raised([&] { fresh.KeyDown(left); }).number, 91) << "another month paints its caption first";
    EXPECT_EQ(fresh.VisibleMonth(), 2);
    fresh.SetCanSelect(true);
    std::int16_t space = 32;
    fresh.KeyDown(space);
    EXPECT_EQ(space, 0);
    EXPECT_TRUE(fresh.IsSelected(On(2027, 2, 28)));
}

TEST_F(Keys, DoNothingWhileTheFocusIsTheDateZero) {
    Ready(On(2026, 11, 21));
    view->SetMaxDate({0});
    desktop.log.Clear();
    for (const std::int16_t code : std::initializer_list<std::int16_t>{38, 40, 37, 39, 33, 34, 13, 32})
        EXPECT_EQ(Key(code), code);
    EXPECT_EQ(TakeLog(), Lines{});
    EXPECT_EQ(Visible(), IntPair(12, 1899));
}

TEST_F(Keys, TheDateZeroIsNoTargetOfAnArrow) {
    Ready(On(1900, 1, 6), {.notifyOnChange = true});
    Key(38);
    EXPECT_EQ(Notifications(), (Lines{"Call form.OnChangeMonth <PictureBox>,1,1900,False"})) << "its own month";
    EXPECT_EQ(Visible(), IntPair(1, 1900));
    EXPECT_EQ(Drawings(), 1u);

    Ready(On(1899, 12, 31), {.notifyOnChange = true});
    Key(37);
    EXPECT_EQ(TakeLog(), Lines{});
}

TEST_F(Keys, TheEndsOfTheCalendarAreErrors) {
    Ready(On(9999, 12, 31));
    EXPECT_EQ(Raised([&] { Key(39); }).number, 5);
    EXPECT_EQ(Raised([&] { Key(34); }).number, 5);
    EXPECT_EQ(Visible(), IntPair(12, 9999));
}

TEST_F(MonthView, PositionsThatAreNoNumbersOverflow) {
    Ready(On(2026, 11, 21));
    EXPECT_EQ(Raised([&] { view->MouseDown(1, std::nanf(""), 0); }).number, 6);
    EXPECT_EQ(Raised([&] { view->MouseDown(1, 0, 1e30f); }).number, 6);
}

TEST_F(MonthView, LetsGoOfTheCallersObjects) {
    Ready(On(2026, 11, 21));
    view.reset();
    EXPECT_EQ(box.use_count(), 1);
    EXPECT_EQ(form.use_count(), 2) << "the box's and the test's";
}

}  // namespace
}  // namespace kwo::controls
