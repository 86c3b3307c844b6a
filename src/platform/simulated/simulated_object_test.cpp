#include "platform/simulated/simulated_object.h"
#include "support/raised.h"

#include <gtest/gtest.h>

#include <array>

namespace kwo::platform::simulated {
namespace {

using test_support::RaisedNumber;
using Lines = std::vector<std::string>;

class SimulatedObjectTest : public testing::Test {
protected:
    Log log;
    Faults faults;
    SimulatedObject form{log, faults, u"Form"};
};

TEST_F(SimulatedObjectTest, PropertiesAreFoundWithoutRegardToCaseAndLetsAreLogged) {
    form.SetProperty(u"Left", 0.0f);
    form.SetProperty(u"Caption", Text());

    form.Let(u"LEFT", 1500.0f);
    form.Let(u"Caption", Text(u"a\"b"));

    EXPECT_EQ(form.Get(u"left"), Variant(1500.0f));
    EXPECT_EQ(form.Property(u"Caption"), Variant(Text(u"a\"b")));
    EXPECT_EQ(log.Lines(), (Lines{"Let LEFT 1500", "Let Caption \"a\"b\""}));
}

TEST_F(SimulatedObjectTest, MemberItDoesNotHaveIsRuntimeError438) {
    std::array<TextView, 0> none;
    EXPECT_EQ(RaisedNumber([&] { form.Get(u"Top"); }), 438);
    EXPECT_EQ(RaisedNumber([&] { form.Let(u"Top", Empty{}); }), 438);
    EXPECT_EQ(RaisedNumber([&] { form.Set(u"Font", nullptr); }), 438);
    EXPECT_EQ(RaisedNumber([&] { form.Call(u"Move"); }), 438);
    EXPECT_EQ(RaisedNumber([&] { form.CallNamed(u"Move", none, {}); }), 438);
}

TEST_F(SimulatedObjectTest, ObjectsAreSetByReference) {
    form.SetProperty(u"Font", HostObjectRef{});
    const auto font = std::make_shared<SimulatedObject>(log, faults, u"StdFont");

    form.Set(u"Font", font);
    form.Set(u"Font", nullptr);

    EXPECT_EQ(log.Lines(), (Lines{"Set Font <StdFont>", "Set Font Nothing"}));
    EXPECT_TRUE(font->IsSameAs(*font));
    EXPECT_FALSE(font->IsSameAs(form));
    EXPECT_EQ(form.TypeName(), u"Form");
}

TEST_F(SimulatedObjectTest, AProcedureWritesBackIntoArgumentsByReferenceAlone) {
    form.SetMethod(u"OnClick", [](std::span<Variant> arguments) {
        arguments[0] = arguments[1] = true;
        return Variant(std::int32_t{7});
    });
    std::array<Argument, 2> asked = {Argument{std::int32_t{3}, false}, Argument{false}};

    EXPECT_EQ(form.Notify(u"onclick", asked), Variant(std::int32_t{7}));
    EXPECT_EQ(asked[0].value, Variant(std::int32_t{3}));
    EXPECT_EQ(asked[1].value, Variant(true));
    const std::array<Variant, 2> arguments = {std::int32_t{3}, false};
    EXPECT_EQ(form.Call(u"onclick", arguments), Variant(std::int32_t{7}));
    EXPECT_EQ(arguments[1], Variant(false));
    EXPECT_EQ(log.Lines(), (Lines{"Call onclick 3,False", "Call onclick 3,False"}));
}

TEST_F(SimulatedObjectTest, PropertyWithArgumentsIsAMethod) {
    form.SetMethod(u"ScaleX", [](std::span<Variant> arguments) { return arguments[0]; });
    form.logsReads = true;
    const std::array<Variant, 2> arguments = {std::int32_t{15}, Missing{}};

    EXPECT_EQ(form.Get(u"ScaleX", arguments), Variant(std::int32_t{15}));
    EXPECT_EQ(log.Lines(), (Lines{"Get ScaleX(15,Missing)"}));

    form.SetProperty(u"ScaleX", std::int32_t{1});
    EXPECT_EQ(form.Get(u"ScaleX", arguments), Variant(std::int32_t{15}));
    EXPECT_EQ(form.Get(u"ScaleX"), Variant(std::int32_t{1}));
}

TEST_F(SimulatedObjectTest, NamedArgumentsComeInTheMethodsOrder) {
    form.SetMethod(u"Size",
                   [](std::span<Variant> arguments) {
                       EXPECT_EQ(arguments.size(), 3u);
                       EXPECT_EQ(arguments[0], Variant(std::int32_t{1}));
                       EXPECT_TRUE(IsMissing(arguments[1]));
                       arguments[2] = std::int32_t{30};
                       return Variant();
                   },
                   {u"Width", u"Depth", u"Height"});
    const std::array<TextView, 2> names = {u"height", u"WIDTH"};
    std::array<Variant, 2> arguments = {std::int32_t{3}, std::int32_t{1}};

    form.CallNamed(u"Size", names, arguments);

    EXPECT_EQ(arguments[0], Variant(std::int32_t{30}));
    EXPECT_EQ(log.Lines(), (Lines{"Call Size height:=3,WIDTH:=1"}));
    const std::array<TextView, 2> wrong = {u"height", u"Length"};
    EXPECT_EQ(RaisedNumber([&] { form.CallNamed(u"Size", wrong, arguments); }), 448);
}

TEST_F(SimulatedObjectTest, MemberFailsUntilItIsMended) {
    form.SetProperty(u"Left", std::int32_t{1});
    form.FailMember(u"Left", {-2147221504, u"Form", u"No.", {}, 0});

    EXPECT_EQ(RaisedNumber([&] { form.Get(u"left"); }), -2147221504);
    EXPECT_EQ(RaisedNumber([&] { form.Let(u"left", std::int32_t{2}); }), -2147221504);
    form.MendMember(u"LEFT");
    EXPECT_EQ(form.Get(u"Left"), Variant(std::int32_t{1}));
}

TEST_F(SimulatedObjectTest, LabelTellsObjectsApart) {
    SimulatedObject pane(log, faults, u"PictureBox", "left");
    pane.SetProperty(u"Width", Empty{});

    pane.Let(u"Width", Date{2.5});

    EXPECT_EQ(log.Lines(), (Lines{"Let left.Width Date 2.5"}));
}

}  // namespace
}  // namespace kwo::platform::simulated
