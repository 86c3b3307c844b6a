#include "sysinfo/form_placement.h"

#include <gtest/gtest.h>

#include <limits>
#include <memory>
#include <vector>

#include "platform/component_error.h"
#include "platform/simulated/simulated_desktop.h"

namespace kwo::sysinfo {
namespace {

using platform::ComponentError;
using platform::Empty;
using platform::Missing;
using platform::Null;
using platform::Text;
using platform::TextView;
using platform::simulated::SimulatedObject;
using Lines = std::vector<std::string>;

class Placement : public testing::Test {
protected:
    std::shared_ptr<SimulatedObject> MakeForm(std::string label, float left, float top, float width, float height,
                                              std::int16_t state = 0) {
        auto made = desktop.MakeObject(u"Form", std::move(label));
        made->SetProperty(u"WindowState", state);
        made->SetProperty(u"Left", left);
        made->SetProperty(u"Top", top);
        made->SetProperty(u"Width", width);
        made->SetProperty(u"Height", height);
        return made;
    }
    std::shared_ptr<SimulatedObject> MakeMdiParent(float width, float height) {
        auto parent = MakeForm("mdi", 300, 400, 9000, 8000);
        parent->SetProperty(u"ScaleWidth", width);
        parent->SetProperty(u"ScaleHeight", height);
        return parent;
    }
    void Center(const Variant& parent = Missing()) { placement.KWO_CenterForm(form, parent); }
    void Place(const FormPosition& position, const Variant& parent = Missing()) {
        placement.KWO_SetFormPosition(form, position, parent);
    }
    const Lines& Log() const { return desktop.log.Lines(); }
    /// Everything of the form's fails, one member at a time.
    void Fail(TextView member) { form->FailMember(member, ComponentError{380, u"Host", u"Refused", {}, 0}); }

    // 15360 by 11520 twips.
    platform::simulated::SimulatedDesktop desktop;
    platform::Platform services = desktop.Services();
    FormPlacement placement{services};
    std::shared_ptr<SimulatedObject> form = MakeForm("form", 100, 200, 5000, 3000);
};

using CenterForm = Placement;

TEST_F(CenterForm, CentresOnTheScreenTopFirst) {
    Center();
    EXPECT_EQ(Log(), (Lines{"Let form.Top 4260", "Let form.Left 5180"}));
}

TEST_F(CenterForm, AMinimisedFormBecomesNormalFirst) {
    form->SetProperty(u"WindowState", std::int16_t{1});
    Center();
    EXPECT_EQ(Log(), (Lines{"Let form.WindowState 0", "Let form.Top 4260", "Let form.Left 5180"}));
    desktop.log.Clear();
    form->SetProperty(u"WindowState", std::int16_t{2});
    Center();
    EXPECT_EQ(Log(), (Lines{"Let form.Top 4260", "Let form.Left 5180"}));
}

TEST_F(CenterForm, AFormLargerThanTheScreenGoesToItsCorner) {
    form->SetProperty(u"Width", 20'000.0f);
    form->SetProperty(u"Height", 12'000.0f);
    Center();
    EXPECT_EQ(Log(), (Lines{"Let form.Top 0", "Let form.Left 0"}));
}

TEST_F(CenterForm, WhatIsNoNumberBecomesZero) {
    form->SetProperty(u"Width", std::numeric_limits<float>::quiet_NaN());
    form->SetProperty(u"Height", std::numeric_limits<float>::infinity());
    Center();
    EXPECT_EQ(Log(), (Lines{"Let form.Top 0", "Let form.Left 0"}));
}

TEST_F(CenterForm, ValuesAreSingles) {
    desktop.screen.height = static_cast<float>(16'777'217);  // as a single: 16777216
    form->SetProperty(u"Height", 0.0f);
    form->SetProperty(u"Width", 0.1);  // a double, read as a single
    Center();
    const float left = (15'360.0f - 0.1f) / 2;
    EXPECT_EQ(form->Property(u"Top"), Variant(8'388'608.0f));
    EXPECT_EQ(form->Property(u"Left"), Variant(left));
    desktop.screen.height = 33'554'432;
    form->SetProperty(u"Height", 16'777'217.0);  // 16777216 as a single
    Center();
    EXPECT_EQ(form->Property(u"Top"), Variant(8'388'608.0f));
}

TEST_F(CenterForm, CentresOverAParentsOuterRectangle) {
    Center(HostObjectRef(MakeForm("parent", 1000, 2000, 8000, 6000)));
    EXPECT_EQ(Log(), (Lines{"Let form.Top 3500", "Let form.Left 2500"}));
}

TEST_F(CenterForm, ASmallParentNearTheCornerDoesNotPullItOut) {
    Center(HostObjectRef(MakeForm("parent", 0, 0, 1000, 1000)));
    EXPECT_EQ(Log(), (Lines{"Let form.Top 0", "Let form.Left 0"}));
}

TEST_F(CenterForm, AParentThatIsNoObjectDoesNotCount) {
    for (const Variant& parent : {Variant(Empty{}), Variant(Null{}), Variant(Text(u"parent")), Variant(std::int32_t{5}),
                                  Variant(HostObjectRef())}) {
        desktop.log.Clear();
        Center(parent);
        EXPECT_EQ(Log(), (Lines{"Let form.Top 4260", "Let form.Left 5180"}));
    }
}

TEST_F(CenterForm, AnMdiChildIsCentredInTheClientAreaOfItsParent) {
    form->SetProperty(u"MDIChild", true);
    Center(HostObjectRef(MakeMdiParent(8500, 7000)));
    EXPECT_EQ(Log(), (Lines{"Let form.Top 2000", "Let form.Left 1750"}));
}

TEST_F(CenterForm, AnMdiChildWithoutAParentStaysWhereItIs) {
    form->SetProperty(u"MDIChild", true);
    form->SetProperty(u"WindowState", std::int16_t{1});
    Center();
    Center(Variant(Text(u"no object")));
    Center(Variant(HostObjectRef()));
    EXPECT_EQ(Log(), (Lines{"Let form.WindowState 0"}));
}

TEST_F(CenterForm, AFormThatIsNoMdiChildIsNotTakenForOne) {
    form->SetProperty(u"MDIChild", false);
    Center(HostObjectRef(MakeMdiParent(8500, 7000)));
    EXPECT_EQ(Log(), (Lines{"Let form.Top 2900", "Let form.Left 2300"}));
}

TEST_F(CenterForm, WhatTheParentDoesNotAnswerLeavesTheScreensValue) {
    const auto parent = MakeForm("parent", 1000, 2000, 8000, 6000);
    parent->FailMember(u"Top", ComponentError{380, u"", u"", {}, 0});
    Center(HostObjectRef(parent));
    EXPECT_EQ(Log(), (Lines{"Let form.Top 4260", "Let form.Left 2500"}));
    desktop.log.Clear();
    form->SetProperty(u"MDIChild", true);
    // No ScaleHeight, no ScaleWidth.
    Center(HostObjectRef(parent));
    EXPECT_EQ(Log(), (Lines{"Let form.Top 4260", "Let form.Left 5180"}));
}

TEST_F(CenterForm, OneFailingMemberAffectsNothingElse) {
    const struct {
        TextView member;
        Lines log;
    } rows[] = {
        {u"WindowState", {"Let form.Top 4260", "Let form.Left 5180"}},
        {u"Height", {"Let form.WindowState 0", "Let form.Top 0", "Let form.Left 5180"}},
        {u"Width", {"Let form.WindowState 0", "Let form.Top 4260", "Let form.Left 0"}},
        {u"MDIChild", {"Let form.WindowState 0", "Let form.Top 4260", "Let form.Left 5180"}},
        {u"Top", {"Let form.WindowState 0", "Let form.Top 4260", "Let form.Left 5180"}},
        {u"Left", {"Let form.WindowState 0", "Let form.Top 4260", "Let form.Left 5180"}},
    };
    for (const auto& row : rows) {
        form = MakeForm("form", 100, 200, 5000, 3000, 1);
        Fail(row.member);
        desktop.log.Clear();
        EXPECT_NO_THROW(Center());
        EXPECT_EQ(Log(), row.log) << std::string(row.member.begin(), row.member.end());
    }
}

TEST_F(CenterForm, ANullFormDoesNothing) {
    EXPECT_NO_THROW(placement.KWO_CenterForm(nullptr, Missing()));
    EXPECT_NO_THROW(placement.KWO_CenterForm(nullptr, HostObjectRef(form)));
    EXPECT_EQ(Log(), Lines{});
}

using SetFormPosition = Placement;

TEST_F(SetFormPosition, AFormThatFitsStaysAndKeepsItsState) {
    Place({});
    EXPECT_EQ(Log(), (Lines{"Let form.WindowState 0"}));
}

TEST_F(SetFormPosition, GivenValuesAreAssignedInOrder) {
    Place({.left = std::int32_t{10}, .top = std::int32_t{20}, .width = 30.0, .height = Text(u"40")});
    // A text in a property reads as a number.
    EXPECT_EQ(Log(), (Lines{"Let form.Left 10", "Let form.Top 20", "Let form.Width 30", "Let form.Height \"40\"",
                            "Let form.WindowState 0"}));
    desktop.log.Clear();
    Place({.top = std::int32_t{21}, .height = std::int32_t{41}});
    EXPECT_EQ(Log(), (Lines{"Let form.Top 21", "Let form.Height 41", "Let form.WindowState 0"}));
}

TEST_F(SetFormPosition, AMinimisedFormBecomesNormalWhileItIsPlaced) {
    form->SetProperty(u"WindowState", std::int16_t{1});
    Place({.left = std::int32_t{10}});
    EXPECT_EQ(Log(), (Lines{"Let form.WindowState 0", "Let form.Left 10", "Let form.WindowState 1"}));
}

TEST_F(SetFormPosition, TheStateThatIsAskedForComesLast) {
    Place({.windowState = std::int16_t{2}, .left = std::int32_t{10}});
    EXPECT_EQ(Log(), (Lines{"Let form.Left 10", "Let form.WindowState 2"}));
    desktop.log.Clear();
    form->SetProperty(u"WindowState", std::int16_t{2});
    Place({.windowState = Text(u"0")});
    EXPECT_EQ(Log(), (Lines{"Let form.WindowState 0"}));
}

TEST_F(SetFormPosition, AnEmptyStateIsTheFormsOwn) {
    form->SetProperty(u"WindowState", std::int16_t{2});
    for (const Variant& state : {Variant(Text()), Variant(Empty{}), Variant(Null{}), Variant(Text(u"wide")),
                                 Variant(std::int32_t{70'000}), Variant(HostObjectRef())}) {
        desktop.log.Clear();
        form->SetProperty(u"WindowState", std::int16_t{2});
        Place({.windowState = state});
        EXPECT_EQ(Log(), (Lines{"Let form.WindowState 2"}));
    }
}

TEST_F(SetFormPosition, TheLeftEdgeIsPulledIn) {
    desktop.screen.width = 9600;
    Place({.left = std::int32_t{-500}});
    EXPECT_EQ(form->Property(u"Left"), Variant(0.0f));
    Place({.left = std::int32_t{-1}});
    EXPECT_EQ(form->Property(u"Left"), Variant(0.0f));
    desktop.log.Clear();
    Place({.left = std::int32_t{0}});
    EXPECT_EQ(Log(), (Lines{"Let form.Left 0", "Let form.WindowState 0"}));
}

TEST_F(SetFormPosition, AFormThatSticksOutSlidesIn) {
    Place({.left = std::int32_t{12'000}});
    EXPECT_EQ(form->Property(u"Left"), Variant(10'360.0f));
    Place({.left = std::int32_t{10'360}});
    EXPECT_EQ(form->Property(u"Left"), Variant(std::int32_t{10'360}));
    Place({.left = std::int32_t{10'361}});
    EXPECT_EQ(form->Property(u"Left"), Variant(10'360.0f));
    Place({.top = std::int32_t{9000}});
    EXPECT_EQ(form->Property(u"Top"), Variant(8520.0f));
    Place({.top = std::int32_t{8520}});
    EXPECT_EQ(form->Property(u"Top"), Variant(std::int32_t{8520}));
}

TEST_F(SetFormPosition, AFormThatIsTooLargeShrinks) {
    desktop.log.Clear();
    Place({.width = 20'000.0f, .height = 30'000.0f});
    EXPECT_EQ(Log(), (Lines{"Let form.Width 20000", "Let form.Height 30000", "Let form.Left 0", "Let form.Width 15360",
                            "Let form.Top 0", "Let form.Height 11520", "Let form.WindowState 0"}));
}

TEST_F(SetFormPosition, AFormAsLargeAsTheScreenSlides) {
    Place({.width = 15'360.0f, .height = 11'520.0f});
    EXPECT_EQ(Log(), (Lines{"Let form.Width 15360", "Let form.Height 11520", "Let form.Left 0", "Let form.Top 0",
                            "Let form.WindowState 0"}));
}

TEST_F(SetFormPosition, FitsInsideAParent) {
    const Variant parent = HostObjectRef(MakeForm("parent", 1000, 1000, 6000, 4000));
    form = MakeForm("form", 1500, 1500, 5000, 5000);
    Place({}, parent);
    EXPECT_EQ(Log(), (Lines{"Let form.Top 1000", "Let form.Height 4000", "Let form.WindowState 0"}));
    desktop.log.Clear();
    form = MakeForm("form", 999, 4500, 1000, 1000);
    Place({}, parent);
    EXPECT_EQ(Log(), (Lines{"Let form.Left 1000", "Let form.Top 4000", "Let form.WindowState 0"}));
    desktop.log.Clear();
    form = MakeForm("form", 6500, 1000, 1000, 1000);
    Place({}, parent);
    EXPECT_EQ(Log(), (Lines{"Let form.Left 6000", "Let form.WindowState 0"}));
    desktop.log.Clear();
    form = MakeForm("form", 2000, 1000, 7000, 1000);
    Place({}, parent);
    EXPECT_EQ(Log(), (Lines{"Let form.Left 1000", "Let form.Width 6000", "Let form.WindowState 0"}));
}

TEST_F(SetFormPosition, AParentThatIsNoObjectIsTheScreen) {
    for (const Variant& parent : {Variant(Empty{}), Variant(Text(u"x")), Variant(HostObjectRef())}) {
        Place({.left = std::int32_t{12'000}}, parent);
        EXPECT_EQ(form->Property(u"Left"), Variant(10'360.0f));
    }
}

TEST_F(SetFormPosition, WhatTheParentDoesNotAnswerIsTheScreens) {
    const auto parent = MakeForm("parent", 1000, 1000, 6000, 4000);
    parent->FailMember(u"Width", ComponentError{380, u"", u"", {}, 0});
    parent->FailMember(u"Top", ComponentError{380, u"", u"", {}, 0});
    form = MakeForm("form", 14'000, 3500, 5000, 1000);
    Place({}, HostObjectRef(parent));
    // Right: 1000 and the screen's width. Bottom: 0 and the parent's height.
    EXPECT_EQ(Log(), (Lines{"Let form.Left 11360", "Let form.Top 3000", "Let form.WindowState 0"}));
}

TEST_F(SetFormPosition, OneFailingMemberAffectsNothingElse) {
    const struct {
        TextView member;
        Lines log;
    } rows[] = {
        {u"Left",
         {"Let form.Left -5", "Let form.Top 12000", "Let form.Width 16000", "Let form.Height 900", "Let form.Top 10620",
          "Let form.WindowState 0"}},
        {u"Top",
         {"Let form.Left -5", "Let form.Top 12000", "Let form.Width 16000", "Let form.Height 900", "Let form.Left 0",
          "Let form.Left 0", "Let form.Width 15360", "Let form.WindowState 0"}},
        {u"Width",
         {"Let form.Left -5", "Let form.Top 12000", "Let form.Width 16000", "Let form.Height 900", "Let form.Left 0",
          "Let form.Top 10620", "Let form.WindowState 0"}},
        {u"Height",
         {"Let form.Left -5", "Let form.Top 12000", "Let form.Width 16000", "Let form.Height 900", "Let form.Left 0",
          "Let form.Left 0", "Let form.Width 15360", "Let form.WindowState 0"}},
        // The state that cannot be read counts as normal.
        {u"WindowState",
         {"Let form.Left -5", "Let form.Top 12000", "Let form.Width 16000", "Let form.Height 900", "Let form.Left 0",
          "Let form.Left 0", "Let form.Width 15360", "Let form.Top 10620", "Let form.WindowState 0"}},
    };
    for (const auto& row : rows) {
        form = MakeForm("form", 100, 200, 5000, 3000, 0);
        Fail(row.member);
        desktop.log.Clear();
        EXPECT_NO_THROW(Place({.left = std::int32_t{-5},
                               .top = std::int32_t{12'000},
                               .width = std::int32_t{16'000},
                               .height = std::int32_t{900}}));
        EXPECT_EQ(Log(), row.log) << std::string(row.member.begin(), row.member.end());
    }
}

TEST_F(SetFormPosition, ANullFormDoesNothing) {
    EXPECT_NO_THROW(placement.KWO_SetFormPosition(nullptr, {.left = std::int32_t{1}}, HostObjectRef(form)));
    EXPECT_EQ(Log(), Lines{});
}

using SetFormPositionIntended = Placement;

TEST_F(SetFormPositionIntended, AFormAboveTheTopEdgeStaysThere) {
    Place({.top = std::int32_t{-500}});
    EXPECT_EQ(form->Property(u"Top"), Variant(std::int32_t{-500}));
    form->SetProperty(u"Top", 1500.0f);
    Place({.top = std::int32_t{500}}, HostObjectRef(MakeForm("parent", 1000, 1000, 8000, 8000)));
    EXPECT_EQ(form->Property(u"Top"), Variant(std::int32_t{500}));
}

TEST_F(SetFormPositionIntended, AnEmptyPlaceIsAssigned) {
    Place({.left = Empty{}, .top = Text(), .width = Null{}});
    EXPECT_EQ(Log(),
              (Lines{"Let form.Left Empty", "Let form.Top \"\"", "Let form.Width Null", "Let form.WindowState 0"}));
}

}  // namespace
}  // namespace kwo::sysinfo
