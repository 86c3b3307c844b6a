#include "controls/picture_box.h"

#include "controls/controls_fixture.h"

namespace kwo::controls {
namespace {

using PictureBoxTest = ControlsTest;

TEST_F(PictureBoxTest, IsKnownByTheNameOfItsType) {
    EXPECT_TRUE(IsPictureBox(box));
    EXPECT_TRUE(IsPictureBox(desktop.MakeObject(u"_PictureBox")));
    EXPECT_FALSE(IsPictureBox(desktop.MakeObject(u"Label")));
    EXPECT_FALSE(IsPictureBox(nullptr));
}

TEST_F(PictureBoxTest, WithoutATypeIsKnownByWhatItAnswersTo) {
    const TextView members[] = {u"hDC", u"hWnd", u"AutoRedraw", u"Cls", u"Refresh"};
    for (std::size_t missing = 0; missing <= std::size(members); ++missing) {
        const auto object = desktop.MakeObject();
        for (std::size_t at = 0; at < std::size(members); ++at) {
            if (at != missing) object->SetProperty(members[at], std::int32_t{1});
        }
        EXPECT_EQ(IsPictureBox(object), missing == std::size(members)) << missing;
    }
}

TEST_F(PictureBoxTest, TheContextIsReadEachTime) {
    PictureBox wrapped(component.platform);
    EXPECT_EQ(Raised([&] { wrapped.Context(); }).number, 91);
    wrapped.Assign(box);
    EXPECT_EQ(wrapped.Context(), kContext);
    box->SetProperty(u"hDC", std::int32_t{78});
    EXPECT_EQ(wrapped.Context(), 78);
}

TEST_F(PictureBoxTest, HandlesAndColoursAreThirtyTwoBitsWithOrWithoutASign) {
    PictureBox wrapped(component.platform);
    wrapped.Assign(box);
    struct Row {
        Variant given;
        std::int32_t expected;
    };
    for (const Row& row :
         {Row{4294967295.0, -1}, Row{2147483648.0, INT32_MIN}, Row{-1.0, -1}, Row{std::int32_t{-5}, -5},
          Row{Text(u"4294901760"), -65536}, Row{platform::Currency::Whole(3000000000), -1294967296}}) {
        box->SetProperty(u"hDC", row.given);
        box->SetProperty(u"hWnd", row.given);
        box->SetProperty(u"ForeColor", row.given);
        EXPECT_EQ(wrapped.Context(), row.expected);
        EXPECT_EQ(wrapped.Window(), row.expected);
        EXPECT_EQ(wrapped.ForeColour(), static_cast<Colour>(row.expected));
    }
    for (const double wide : {4294967296.0, -2147483649.0}) {
        box->SetProperty(u"hWnd", wide);
        EXPECT_EQ(Raised([&] { wrapped.Window(); }).number, 6);
    }
}

TEST_F(PictureBoxTest, AnotherFontIsTakenAtOnce) {
    PictureBox wrapped(component.platform);
    wrapped.Assign(box);
    wrapped.SetFontBold(true);
    EXPECT_EQ(font->Property(u"Bold"), Variant(true));
    const auto other = desktop.MakeObject(u"Font", "other");
    other->SetProperty(u"Bold", false);
    box->SetProperty(u"Font", HostObjectRef(other));
    wrapped.SetFontBold(true);
    EXPECT_EQ(other->Property(u"Bold"), Variant(true));
    box->SetProperty(u"Font", HostObjectRef());
    EXPECT_EQ(Raised([&] { wrapped.SetFontBold(true); }).number, 91);
}

TEST_F(PictureBoxTest, WhatRefusesToBeBoldIsNotKept) {
    PictureBox wrapped(component.platform);
    wrapped.Assign(box);
    auto odd = desktop.MakeObject(u"Odd");
    box->SetProperty(u"Font", HostObjectRef(odd));
    EXPECT_EQ(Raised([&] { wrapped.SetFontBold(true); }).number, 438);
    box->SetProperty(u"Font", HostObjectRef(font));
    const std::weak_ptr<SimulatedObject> watched = std::exchange(odd, nullptr);
    EXPECT_TRUE(watched.expired()) << "it may be the very object that owns the box";
}

TEST_F(PictureBoxTest, AFilledBoxIsASinglesCallWithTheOption) {
    PictureBox wrapped(component.platform);
    wrapped.Assign(box);
    wrapped.FillBox({15, 30, 45, 60}, 0x8000000D);
    EXPECT_EQ(TakeLog(), (Lines{"Call box.Line 38,15,30,45,60,-2147483635"}));
}

}  // namespace
}  // namespace kwo::controls
