#include "frame/routines.h"

#include "frame/frame_fixture.h"

namespace kwo::frame {
namespace {

using platform::ErrorValue;
using platform::Variant;

class RoutinesTest : public FrameTest {
protected:
    std::int32_t attributes = 77;
};
using PathExistsTest = RoutinesTest;
using CheckAPIResultTest = RoutinesTest;
using HexToLongTest = RoutinesTest;

TEST_F(PathExistsTest, IsTrueForAFileAndFalseForAFolder) {
    desktop.files.AddFile(u"C:\\dir\\file.txt", 0x21);
    EXPECT_EQ(routines.KWO_PathExists(u"C:\\dir\\file.txt", true, attributes, true), Variant(true));
    EXPECT_EQ(attributes, 0x21);
    EXPECT_EQ(routines.KWO_PathExists(u"C:\\dir", true, attributes, true), Variant(false));
    EXPECT_EQ(attributes & 0x10, 0x10);
    EXPECT_EQ(error.Saved().number, 0);
}

TEST_F(PathExistsTest, SavesThePlatformsErrorForAMissingFile) {
    EXPECT_EQ(routines.KWO_PathExists(u"C:\\none.txt", false, attributes, false), Variant(false));
    EXPECT_EQ(attributes, -1);
    EXPECT_EQ(error.Saved().number, -2);
}

TEST_F(PathExistsTest, ReturnsTheNumberAsAnErrorValueOnRequest) {
    EXPECT_EQ(routines.KWO_PathExists(u"C:\\none.txt", true, attributes, false), Variant(ErrorValue{-2}));
}

TEST_F(PathExistsTest, RaisesOnRequest) {
    const ComponentError raised =
        Raised([&] { routines.KWO_PathExists(u"C:\\none\\none.txt", true, attributes, true); });
    EXPECT_EQ(raised.number, -3);
    EXPECT_EQ(raised.source, u"MKWORoutines.KWO_PathExists");
}

TEST_F(PathExistsTest, AnEmptyPathIsNotFoundWithoutAskingThePlatform) {
    EXPECT_EQ(routines.KWO_PathExists(u"", true, attributes, false), Variant(ErrorValue{-2}));
    EXPECT_EQ(attributes, -1);
    EXPECT_EQ(desktop.faults.Calls("GetFileAttributes"), 0);
}

TEST_F(PathExistsTest, EachFailureStandsForItself) {
    routines.KWO_PathExists(u"C:\\none.txt", false, attributes, false);
    EXPECT_EQ(routines.KWO_PathExists(u"C:\\none\\none.txt", true, attributes, false), Variant(ErrorValue{-3}));
}

TEST_F(PathExistsTest, OutsideTheNtFamilyTheNameGoesOutInTheCodePage) {
    desktop.files.AddFile(u"C:\\dir\\caf\u00E9.txt");
    desktop.files.AddFile(u"C:\\dir\\\u4E2D.txt");
    EXPECT_EQ(routines.KWO_PathExists(u"C:\\dir\\\u4E2D.txt", false, attributes, false), Variant(true));
    EXPECT_EQ(desktop.faults.Calls("GetFileAttributesAnsi"), 0);

    RoutinesTest::LeaveTheNtFamily();
    HostIdentity elsewhere(services.host);
    MKWORoutines there(services.files, services.errors, elsewhere, error);
    EXPECT_EQ(there.KWO_PathExists(u"C:\\dir\\caf\u00E9.txt", false, attributes, false), Variant(true));
    EXPECT_EQ(there.KWO_PathExists(u"C:\\dir\\\u4E2D.txt", false, attributes, false), Variant(false));
    EXPECT_EQ(desktop.faults.Calls("GetFileAttributesAnsi"), 2);
    EXPECT_EQ(desktop.faults.Calls("GetFileAttributes"), 1);
}

TEST_F(CheckAPIResultTest, AnythingButZeroAndMinusOneIsSuccess) {
    for (const std::int32_t result : {1, 2, -2, INT32_MAX, INT32_MIN}) {
        EXPECT_TRUE(routines.KWO_CheckAPIResult(result, true, u"s", u"t")) << result;
    }
}

TEST_F(CheckAPIResultTest, FailureWithoutLastErrorIsFalse) {
    desktop.errors.SetLast(5);
    EXPECT_FALSE(routines.KWO_CheckAPIResult(0, false, u"s", u"t"));
    EXPECT_FALSE(routines.KWO_CheckAPIResult(-1, false, u"s", u"t"));
}

TEST_F(CheckAPIResultTest, FailureRaisesTheLastErrorOrInvalidHandle) {
    desktop.errors.system[5] = u"Access is denied.\r\n";
    desktop.errors.SetLast(5);
    const ComponentError raised = Raised([&] { routines.KWO_CheckAPIResult(0, true, u"Source.Here", u"Text"); });
    EXPECT_EQ(raised.number, -5);
    EXPECT_EQ(raised.source, u"Source.Here");
    EXPECT_EQ(raised.description, u"Text Access is denied.");
    desktop.errors.SetLast(0);
    EXPECT_EQ(Raised([&] { routines.KWO_CheckAPIResult(-1, true, u"s", u"t"); }).number, -6);
}

TEST_F(HexToLongTest, ReadsDigitsOfEitherCase) {
    EXPECT_EQ(routines.KWO_HexToLong(u"0409"), 1033);
    EXPECT_EQ(routines.KWO_HexToLong(u"fF"), 255);
    EXPECT_EQ(routines.KWO_HexToLong(u""), 0);
    EXPECT_EQ(routines.KWO_HexToLong(u"7FFFFFFF"), INT32_MAX);
    EXPECT_EQ(routines.KWO_HexToLong(u"80000000"), INT32_MIN);
    EXPECT_EQ(routines.KWO_HexToLong(u"FFFFFFFF"), -1);
    EXPECT_EQ(routines.KWO_HexToLong(u"000000000001"), 1);
}

TEST_F(HexToLongTest, AnyOtherCharacterIsAnError) {
    for (const TextView text : {u"G", u" 1", u"1 ", u"&H1", u"-1", u"/", u":", u"@", u"`", u"g"}) {
        const ComponentError raised = Raised([&] { routines.KWO_HexToLong(text); });
        EXPECT_EQ(raised.description, u"Invalid Hex Digit");
        EXPECT_LT(raised.number, 0);
    }
}

TEST_F(HexToLongTest, TheErrorHasTheTextOfTheTable) {
    struct Table final : MessageLookup {
        std::optional<Text> LoadedMessage(std::int32_t number, std::span<const Text>) override {
            return u"message " + Decimal(number);
        }
    } table;
    error.SetMessages(&table);
    const ComponentError raised = Raised([&] { routines.KWO_HexToLong(u"G"); });
    EXPECT_EQ(raised.number, kInvalidHexDigit);
    EXPECT_EQ(raised.description, u"message 1902");
    EXPECT_EQ(raised.source, u"MKWORoutines.KWO_HexToLong");
    error.SetMessages(nullptr);
}

TEST_F(HexToLongTest, TheErrorStandsForItself) {
    error.KWO_SaveError(Current(13, u"Type mismatch"), {.source = u"KWOTimer.AddAlarm"});
    EXPECT_EQ(Raised([&] { routines.KWO_HexToLong(u"G"); }).description, u"Invalid Hex Digit");
}

TEST_F(HexToLongTest, MoreThanThirtyTwoBitsOverflow) {
    EXPECT_EQ(Raised([&] { routines.KWO_HexToLong(u"100000000"); }).number, 6);
}

}  // namespace
}  // namespace kwo::frame
