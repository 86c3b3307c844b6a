#include "contract_test.h"
#include "platform/pictures.h"

namespace kwo::contract {
namespace {

using platform::ComponentError;
using platform::Pictures;
using platform::Variant;
using test_support::Raised;

class PicturesContract : public ContractTest {
protected:
    Pictures& pictures = platform().pictures;
};

TEST_F(PicturesContract, AnIconHasItsTypeAndItsHandle) {
    const LoadedPicture icon = outside().MakeIcon();

    EXPECT_EQ(pictures.Type(*icon.object), Pictures::kIcon);
    ASSERT_NE(icon.handle, 0);
    EXPECT_EQ(pictures.NativeHandle(*icon.object), icon.handle);
    EXPECT_EQ(pictures.NativeHandle(*icon.object), icon.handle) << "each time";
}

TEST_F(PicturesContract, APictureThatHasLoadedNothingHasNoHandle) {
    const platform::HostObjectRef picture = outside().MakeEmptyPicture();

    EXPECT_EQ(pictures.Type(*picture), 0);
    EXPECT_EQ(pictures.NativeHandle(*picture), 0);
}

TEST_F(PicturesContract, APictureMayBeAnyObjectWithTypeAndHandle) {
    const std::unique_ptr<ScriptedObject> scripted = outside().MakeObject();
    const platform::HostObjectRef picture = scripted->Reference();
    scripted->SetProperty(u"Type", std::int16_t{1});
    for (const Variant& handle : {Variant(std::int32_t{-2}), Variant(4'294'967'294.0)}) {
        scripted->SetProperty(u"Handle", handle);
        EXPECT_EQ(pictures.NativeHandle(*picture), -2) << "32 bits, with or without a sign";
    }
    EXPECT_EQ(pictures.Type(*picture), 1);
}

TEST_F(PicturesContract, WhatIsNoPictureRaises438) {
    const platform::HostObjectRef object = outside().MakeObject()->Reference();

    EXPECT_EQ(RaisedNumber([&] { pictures.Type(*object); }), 438);
    EXPECT_EQ(RaisedNumber([&] { pictures.NativeHandle(*object); }), 438);
}

TEST_F(PicturesContract, TheErrorOfThePictureArrives) {
    const std::unique_ptr<ScriptedObject> scripted = outside().MakeObject();
    for (const TextView member : {u"Type", u"Handle"}) {
        scripted->SetProperty(member, std::int32_t{1});
        scripted->FailMember(member, {481, u"Picture", u"Invalid picture", {}, 0});
    }
    const platform::HostObjectRef picture = scripted->Reference();
    for (const ComponentError& error :
         {Raised([&] { pictures.Type(*picture); }), Raised([&] { pictures.NativeHandle(*picture); })}) {
        EXPECT_EQ(error.number, 481);
        EXPECT_EQ(error.source, u"Picture");
        EXPECT_EQ(error.description, u"Invalid picture");
    }
}

TEST_F(PicturesContract, ValuesThatAreNoNumbersRaise) {
    const std::unique_ptr<ScriptedObject> scripted = outside().MakeObject();
    const platform::HostObjectRef picture = scripted->Reference();
    scripted->SetProperty(u"Type", Text(u"icon"));
    scripted->SetProperty(u"Handle", Text(u"x"));
    EXPECT_EQ(RaisedNumber([&] { pictures.Type(*picture); }), 13);
    EXPECT_EQ(RaisedNumber([&] { pictures.NativeHandle(*picture); }), 13);

    scripted->SetProperty(u"Handle", 1e10);
    EXPECT_EQ(RaisedNumber([&] { pictures.NativeHandle(*picture); }), 6);
}

TEST_F(PicturesContract, ThePictureIsHeldWhileItIsAsked) {
    std::unique_ptr<ScriptedObject> scripted = outside().MakeObject();
    platform::HostObjectRef picture = scripted->Reference();
    auto part = std::make_shared<int>();
    const std::weak_ptr<int> life = part;
    scripted->SetMethod(u"Part", [part](std::span<Variant>) { return Variant(); });
    part.reset();
    bool isHeld = false;
    scripted->SetMethod(u"Handle", [&](std::span<Variant>) {
        scripted.reset();
        picture.reset();
        isHeld = !life.expired();
        return Variant(std::int32_t{5});
    });
    platform::HostObject& asked = *picture;

    EXPECT_EQ(pictures.NativeHandle(asked), 5);

    EXPECT_TRUE(isHeld);
    EXPECT_TRUE(life.expired());
}

}  // namespace
}  // namespace kwo::contract
