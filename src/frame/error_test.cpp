#include "frame/error.h"

#include "frame/frame_fixture.h"

namespace kwo::frame {
namespace {

constexpr std::int32_t kAccessDenied = 5;

class ErrorTest : public FrameTest {
protected:
    ErrorTest() {
        desktop.errors.system[5] = u"Access is denied.\r\n";
        desktop.errors.system[2] = u"File not found.\r\n";
    }
    /// A message table with one text.
    struct Table final : MessageLookup {
        std::optional<Text> LoadedMessage(std::int32_t number, std::span<const Text>) override {
            return u"message " + Decimal(number);
        }
    };
};
using RaiseErrorTest = ErrorTest;
using SystemErrorTextTest = ErrorTest;
using SaveErrorTest = ErrorTest;
using RaiseSavedErrorTest = ErrorTest;
using AppErrorTest = ErrorTest;
using RaiseErrorIntended = ErrorTest;
using SaveErrorIntended = ErrorTest;

TEST_F(RaiseErrorTest, CodeAndNegatedCodeGiveTheSameNumberAndText) {
    for (const std::int32_t code : {kAccessDenied, -kAccessDenied}) {
        const ComponentError raised = Raised([&] { error.KWO_RaiseError(code, u"KWORegistry.Member"); });
        EXPECT_EQ(raised.number, -5);
        EXPECT_EQ(raised.description, u"Access is denied.");
        EXPECT_EQ(raised.source, u"KWORegistry.Member");
    }
}

TEST_F(RaiseErrorTest, OnlyTheLowSixteenBitsOfACodeCount) {
    EXPECT_EQ(Raised([&] { error.KWO_RaiseError(0x10005, u"s"); }).number, -5);
    EXPECT_EQ(Raised([&] { error.KWO_RaiseError(-0x10005, u"s"); }).number, -5);
    EXPECT_EQ(Raised([&] { error.KWO_RaiseError(0xFFFF, u"s"); }).number, -0xFFFF);
    EXPECT_EQ(Raised([&] { error.KWO_RaiseError(0x10000, u"s"); }).number, 0);
    EXPECT_EQ(Raised([&] { error.KWO_RaiseError(INT32_MIN, u"s"); }).number, 0);
}

TEST_F(RaiseErrorTest, CodeZeroTakesThePlatformsLastErrorAndKeepsIt) {
    desktop.errors.SetLast(2);

    const ComponentError raised = Raised([&] { error.KWO_RaiseError(0, u"s"); });

    EXPECT_EQ(raised.number, -2);
    EXPECT_EQ(raised.description, u"File not found.");
    EXPECT_EQ(error.LastPlatformCode(), 2);
}

TEST_F(RaiseErrorTest, AGivenCodeIsNotKeptAsTheLastPlatformCode) {
    Raised([&] { error.KWO_RaiseError(5, u"s"); });
    EXPECT_EQ(error.LastPlatformCode(), 0);
}

TEST_F(RaiseErrorTest, ReturnsWhenThereIsNoErrorUnlessAskedToRaise) {
    EXPECT_EQ(Raised([&] { error.KWO_RaiseError(0, u"s", u"text"); }).number, 0);

    const ComponentError raised = Raised([&] { error.KWO_RaiseError(0, u"s", u"text", {}, true); });

    EXPECT_EQ(raised.number, static_cast<std::int32_t>(0x80040000));
    EXPECT_EQ(raised.description, u"text");
}

TEST_F(RaiseErrorTest, TextsGoBeforeThePlatformsText) {
    EXPECT_EQ(Raised([&] { error.KWO_RaiseError(5, u"s", u"first", u"second"); }).description,
              u"second first Access is denied.");
    EXPECT_EQ(Raised([&] { error.KWO_RaiseError(5, u"s", {}, u"second"); }).description, u"second Access is denied.");
    EXPECT_EQ(Raised([&] { error.KWO_RaiseError(5, u"s", u"  first"); }).description, u"first Access is denied.");
}

TEST_F(RaiseErrorTest, AnEmptyDescriptionBecomesUnknownError) {
    desktop.errors.system[7777] = u"  \r\n ";
    EXPECT_EQ(Raised([&] { error.KWO_RaiseError(7777, u"s"); }).description, u"Unknown error.");
    EXPECT_EQ(Raised([&] { error.KWO_RaiseError(0, u"s", u"  ", u" ", true); }).description, u"Unknown error.");
}

TEST_F(RaiseErrorTest, AMissingSourceIsTheRoutineOnTopOfTheTraceThenTheHost) {
    trace.KWO_RoutinePush(u"KWOTimer.AddAlarm");
    EXPECT_EQ(Raised([&] { error.KWO_RaiseError(5, u""); }).source, u"KWOTimer.AddAlarm");
    trace.KWO_RoutinePop();
    EXPECT_EQ(Raised([&] { error.KWO_RaiseError(5, u""); }).source, u"HOSTAPP");
}

TEST_F(RaiseErrorIntended, TraceLineHasNoBlankBehindTheColonAndTheSourceWithoutAPlaceForIt) {
    Raised([&] { error.KWO_RaiseError(5, u"KWORegistry.Member"); });
    trace.KWO_RoutinePush(u"KWORegistry.Member");
    Raised([&] { error.KWO_RaiseError(5, u"KWORegistry.Member"); });

    EXPECT_EQ(trace.lines, (std::vector<Text>{u"Raising error #-5:Access is denied.; Source=KWORegistry.Member",
                                              u"Raising error #-5:Access is denied. KWORegistry.Member"}));
}

TEST_F(SystemErrorTextTest, IsOneTrimmedLineUpToTheFirstZero) {
    desktop.errors.system[9001] = u" one\r\ntwo\r\n";
    desktop.errors.system[9002] = Text(u"cut\0here", 8);
    EXPECT_EQ(error.KWO_SystemErrorText(9001), u"one two");
    EXPECT_EQ(error.KWO_SystemErrorText(9002), u"cut");
    EXPECT_EQ(error.KWO_SystemErrorText(0), u"");
}

TEST_F(SystemErrorTextTest, LeavesTheLastErrorAsItWas) {
    desktop.errors.SetLast(87);
    error.KWO_SystemErrorText(5);
    error.KWO_SystemErrorText(12003);
    EXPECT_EQ(desktop.errors.Last(), 87);
}

TEST_F(SystemErrorTextTest, InternetErrorsComeFromTheirModuleWhenItIsLoaded) {
    EXPECT_EQ(error.KWO_SystemErrorText(12000), u"");
    desktop.errors.modules[u"wininet.dll"] = {{12000, u"first\r\n"}, {12999, u"last\r\n"}, {13000, u"not ours"}};
    desktop.errors.system[11999] = u"before";
    desktop.errors.system[13000] = u"behind";
    EXPECT_EQ(error.KWO_SystemErrorText(12000), u"first");
    EXPECT_EQ(error.KWO_SystemErrorText(12999), u"last");
    EXPECT_EQ(error.KWO_SystemErrorText(11999), u"before");
    EXPECT_EQ(error.KWO_SystemErrorText(13000), u"behind");
}

TEST_F(SystemErrorTextTest, ExtendedInternetErrorIsTheServersResponse) {
    desktop.errors.internetResponse = u"550 No such\r\nfile\r\n";
    EXPECT_EQ(error.KWO_SystemErrorText(12003), u"550 No such file");
    desktop.errors.internetResponse = u"";
    EXPECT_EQ(error.KWO_SystemErrorText(12003), u"");
}

TEST_F(SystemErrorTextTest, AnExtendedInternetErrorIsAskedForTwiceUnlessTheFirstAnswerWillDo) {
    struct Row {
        TextView response;
        std::int32_t failure;
        int calls;
    };
    for (const Row& row : {Row{u"550 No such file", 0, 2}, Row{u"550 No such file", 6, 1}}) {
        const int before = desktop.faults.Calls("InternetGetLastResponseInfo");
        desktop.errors.internetResponse = row.response;
        if (row.failure != 0) desktop.FailCall("InternetGetLastResponseInfo", 1, row.failure);
        EXPECT_EQ(error.KWO_SystemErrorText(12003), row.failure == 0 ? row.response : u"");
        EXPECT_EQ(desktop.faults.Calls("InternetGetLastResponseInfo") - before, row.calls);
    }
}

TEST_F(SystemErrorTextTest, AnInternetResponseWithoutABufferWillDo) {
    /// A system whose library has nothing to say.
    class Silent final : public platform::SystemErrors {
    public:
        std::int32_t Last() override { return 122; }
        void SetLast(std::int32_t) override {}
        Text SystemText(std::int32_t) override { return u"system"; }
        Text ModuleText(TextView, std::int32_t) override { return u"module"; }
        InternetResponse LastInternetResponse(std::uint32_t) override {
            ++asked;
            return {true, 0, {}};
        }
        NetworkError LastNetworkError() override { return {}; }

        int asked = 0;
    } silent;
    MKWOError ofIt{silent, services.host, identity, trace, boxes};

    EXPECT_EQ(ofIt.KWO_SystemErrorText(12003), u"");
    EXPECT_EQ(silent.asked, 1);
}

TEST_F(SystemErrorTextTest, AnExtendedInternetErrorIsNoTextOfTheModule) {
    desktop.errors.modules[u"wininet.dll"] = {{12003, u"An extended error was returned.\r\n"}};
    desktop.errors.internetResponse = u"550 No such file";
    EXPECT_EQ(error.KWO_SystemErrorText(12003), u"550 No such file");
    desktop.FailCall("InternetGetLastResponseInfo", 2, 6);
    EXPECT_EQ(error.KWO_SystemErrorText(12003), u"");
}

TEST_F(SystemErrorTextTest, ExtendedNetworkErrorIsTextAndProvider) {
    desktop.errors.networkError = {Text(u"Line lost\0junk", 14), Text(u"Network\0junk", 12)};
    EXPECT_EQ(error.KWO_SystemErrorText(1208), u"Line lost Network");
    desktop.errors.networkError = {u"Line lost", u""};
    EXPECT_EQ(error.KWO_SystemErrorText(1208), u"Line lost");
}

TEST_F(SystemErrorTextTest, Code144HasAHintOnALineOfItsOwn) {
    desktop.errors.system[144] = u"Busy.\r\n";
    EXPECT_EQ(error.KWO_SystemErrorText(144),
              u"Busy.\r\nPlease refer to Microsoft Knowledge Base Articles Q167871, Q160843, Q176445 at "
              u"https://support.microsoft.com/search.");
    Table table;
    error.SetMessages(&table);
    EXPECT_EQ(error.KWO_SystemErrorText(144), u"Busy.\r\nmessage 1901");
}

TEST_F(SaveErrorTest, KeepsNumberDescriptionAndSource) {
    error.KWO_SaveError(Current(13, u"Type mismatch"), {.source = u"KWOTimer.AddAlarm"});
    EXPECT_EQ(error.Saved().number, 13);
    EXPECT_EQ(error.Saved().description, u"Type mismatch");
    EXPECT_EQ(error.Saved().source, u"KWOTimer.AddAlarm");
}

TEST_F(SaveErrorTest, TheCallersTextGoesOnALineOfItsOwnUnlessItIsThereAlready) {
    error.KWO_SaveError(Current(13, u"Type mismatch"), {.text = u"While adding.", .source = u"s"});
    EXPECT_EQ(error.Saved().description, u"Type mismatch\r\nWhile adding.");
    error.KWO_SaveError(Current(13, u"Type mismatch"), {.text = u"mismatch", .source = u"s", .replace = true});
    EXPECT_EQ(error.Saved().description, u"Type mismatch");
    error.KWO_SaveError(Current(13, u""), {.text = u"Alone", .source = u"s", .replace = true});
    EXPECT_EQ(error.Saved().description, u"Alone");
}

TEST_F(SaveErrorTest, AnAutomationErrorGetsThePlatformsTextForItsNumber) {
    desktop.errors.system[429] = u"Cannot create.\r\n";
    error.KWO_SaveError(Current(429, u"AUTOMATION Error"), {.source = u"s"});
    EXPECT_EQ(error.Saved().description, u"AUTOMATION Error\r\nCannot create.");
    error.KWO_SaveError(Current(0, u"Automation error"), {.source = u"s", .replace = true});
    EXPECT_EQ(error.Saved().description, u"Automation error");
}

TEST_F(SaveErrorTest, WithTheCallersTextUnderItAnAutomationErrorIsNoneAnyMore) {
    desktop.errors.system[429] = u"Cannot create.\r\n";
    error.KWO_SaveError(Current(429, u"Automation error"), {.text = u"While creating.", .source = u"s"});
    EXPECT_EQ(error.Saved().description, u"Automation error\r\nWhile creating.");
    error.KWO_SaveError(Current(429, u""), {.text = u"Automation error", .source = u"s", .replace = true});
    EXPECT_EQ(error.Saved().description, u"Automation error\r\nCannot create.");
}

TEST_F(SaveErrorTest, APlatformCodeStandsInForAMissingNumber) {
    error.KWO_SaveError({}, {.source = u"s", .platformCode = -5});
    EXPECT_EQ(error.Saved().number, -5);
    EXPECT_EQ(error.Saved().description, u"Access is denied.");
    EXPECT_EQ(error.LastPlatformCode(), 5);
    EXPECT_EQ(desktop.errors.Last(), 5);
}

TEST_F(SaveErrorTest, TheSmallestPlatformCodeStandsInToo) {
    desktop.errors.system[1] = u"Incorrect function.\r\n";
    error.KWO_SaveError({}, {.source = u"s", .platformCode = 1});
    EXPECT_EQ(error.Saved().number, -1);
    EXPECT_EQ(error.Saved().description, u"Incorrect function.");
}

TEST_F(SaveErrorTest, APlatformCodeOfZeroIsNoError) {
    desktop.errors.system[0] = u"Success.\r\n";
    desktop.errors.SetLast(87);
    error.KWO_SaveError({}, {.source = u"s", .platformCode = 0});
    EXPECT_EQ(error.Saved().number, 0);
    EXPECT_EQ(error.Saved().description, u"");
    EXPECT_EQ(error.LastPlatformCode(), 0);
    EXPECT_EQ(desktop.errors.Last(), 0);
}

TEST_F(SaveErrorTest, APlatformCodesTextIsAddedOnce) {
    error.KWO_SaveError(Current(0, u"It failed"), {.source = u"s", .platformCode = 5});
    EXPECT_EQ(error.Saved().description, u"It failed\r\nAccess is denied.");
    error.KWO_SaveError(Current(0, u"Access is denied."), {.source = u"s", .platformCode = 5, .replace = true});
    EXPECT_EQ(error.Saved().description, u"Access is denied.");
}

TEST_F(SaveErrorTest, APlatformCodeBesideANumberOnlySetsTheLastError) {
    error.KWO_SaveError(Current(13, u"Type mismatch"), {.source = u"s", .platformCode = 5});
    EXPECT_EQ(error.Saved().number, 13);
    EXPECT_EQ(error.Saved().description, u"Type mismatch");
    EXPECT_EQ(desktop.errors.Last(), 5);
}

TEST_F(SaveErrorTest, CodeMinusOneIsNone) {
    desktop.errors.SetLast(87);
    error.KWO_SaveError(Current(13, u"Type mismatch"), {.source = u"s", .platformCode = -1});
    EXPECT_EQ(desktop.errors.Last(), 87);
    EXPECT_EQ(error.LastPlatformCode(), 0);
}

TEST_F(SaveErrorTest, ANumberWithoutDescriptionGetsThePlatformsTextForItsNegation) {
    error.KWO_SaveError(Current(-5, u""), {.source = u"s"});
    EXPECT_EQ(error.Saved().description, u"Access is denied.");
}

TEST_F(SaveErrorTest, APositiveNumberWithoutDescriptionAsksForTheTextOfItsNegation) {
    desktop.errors.system[13] = u"The data is invalid.\r\n";
    error.KWO_SaveError(Current(13, u""), {.source = u"s"});
    EXPECT_EQ(error.Saved().number, 13);
    EXPECT_EQ(error.Saved().description, u"");
    desktop.errors.system[-13] = u"Text of the negated number.\r\n";
    error.KWO_SaveError(Current(13, u""), {.source = u"s", .replace = true});
    EXPECT_EQ(error.Saved().description, u"Text of the negated number.");
}

TEST_F(SaveErrorTest, TheGivenNumberGoesBeforeTheCurrentOne) {
    error.KWO_SaveError(Current(13, u"Type mismatch"), {.errNumber = 77, .source = u"s"});
    EXPECT_EQ(error.Saved().number, 77);
}

TEST_F(SaveErrorTest, TheFirstNumberWinsUnlessReplaced) {
    error.KWO_SaveError(Current(13, u"a"), {.source = u"s", .platformCode = 5});
    error.KWO_SaveError(Current(6, u"b"), {.source = u"s", .platformCode = 2});
    EXPECT_EQ(error.Saved().number, 13);
    EXPECT_EQ(error.LastPlatformCode(), 5);
    error.KWO_SaveError(Current(6, u"b"), {.source = u"s", .platformCode = 2, .replace = true});
    EXPECT_EQ(error.Saved().number, 6);
    EXPECT_EQ(error.LastPlatformCode(), 2);
    EXPECT_EQ(error.Saved().description, u"b");
}

TEST_F(SaveErrorTest, ThePlatformCodeThatComesFirstIsKept) {
    error.KWO_SaveError(Current(13, u"a"), {.source = u"s"});
    EXPECT_EQ(error.LastPlatformCode(), 0);
    error.KWO_SaveError(Current(6, u"b"), {.source = u"s", .platformCode = -5});
    EXPECT_EQ(error.LastPlatformCode(), 5);
}

TEST_F(SaveErrorTest, ReplacingWithoutAPlatformCodeForgetsTheLastOne) {
    error.KWO_SaveError(Current(13, u"a"), {.source = u"s", .platformCode = 5});
    error.KWO_SaveError(Current(6, u"b"), {.source = u"s", .replace = true});
    EXPECT_EQ(error.LastPlatformCode(), 0);
}

TEST_F(SaveErrorTest, LaterDescriptionsAreAttachedAsSentences) {
    struct Row {
        TextView first, both;
    };
    for (const Row& row : {Row{u"one", u"one. two"}, Row{u"one.", u"one. two"}, Row{u"one ", u"one two"},
                           Row{u"one\r\n", u"one\r\ntwo"}, Row{u"", u"two"}}) {
        error.KWO_SaveError(Current(13, row.first), {.source = u"s", .replace = true});
        if (row.first.empty()) error.KWO_SaveError(Current(0, u""), {.source = u"s", .replace = true});
        error.KWO_SaveError(Current(13, u"two"), {.source = u"s"});
        EXPECT_EQ(error.Saved().description, row.both);
    }
}

TEST_F(SaveErrorTest, LaterSourcesAreAttachedOnceBehindASemicolon) {
    error.KWO_SaveError(Current(13, u"a"), {.source = u"Inner.Routine"});
    error.KWO_SaveError(Current(13, u"a"), {.source = u"Outer.Routine"});
    error.KWO_SaveError(Current(13, u"a"), {.source = u"Inner.Routine"});
    EXPECT_EQ(error.Saved().source, u"Inner.Routine;Outer.Routine");
}

TEST_F(SaveErrorTest, AMissingSourceIsTheRoutineOnTopOfTheTrace) {
    trace.KWO_RoutinePush(u"KWOTimer.AddAlarm");
    error.KWO_SaveError(Current(13, u"a"), {});
    EXPECT_EQ(error.Saved().source, u"KWOTimer.AddAlarm");
}

TEST_F(SaveErrorTest, TheFirstHelpIsKept) {
    error.KWO_SaveError({13, {}, u"a", u"first.hlp", 7}, {.source = u"s"});
    error.KWO_SaveError({13, {}, u"a", u"second.hlp", 8}, {.source = u"s"});
    EXPECT_EQ(error.Saved().helpFile, u"first.hlp");
    EXPECT_EQ(error.Saved().helpContext, 7);
}

TEST_F(SaveErrorTest, HelpIsKeptInItsPartsAndOverAReplacement) {
    error.KWO_SaveError({13, {}, u"a", u"first.hlp", 0}, {.source = u"s"});
    error.KWO_SaveError({13, {}, u"a", u"second.hlp", 8}, {.source = u"s"});
    EXPECT_EQ(error.Saved().helpFile, u"first.hlp");
    EXPECT_EQ(error.Saved().helpContext, 8);
    error.KWO_SaveError({6, {}, u"b", u"third.hlp", 9}, {.source = u"s", .replace = true});
    EXPECT_EQ(error.Saved().helpFile, u"first.hlp");
    EXPECT_EQ(error.Saved().helpContext, 8);
}

TEST_F(SaveErrorTest, DescriptionsAndSourcesAreAttachedUpToALength) {
    constexpr std::size_t kLongest = 8192;
    error.KWO_SaveError(Current(13, Text(kLongest, u'a')), {.source = Text(kLongest, u'b')});
    error.KWO_SaveError(Current(13, u"the last one"), {.source = u"Last.Source"});
    EXPECT_TRUE(error.Saved().description.ends_with(u"a. the last one"));
    EXPECT_TRUE(error.Saved().source.ends_with(u"b;Last.Source"));
    const ComponentError full = error.Saved();
    error.KWO_SaveError(Current(13, u"too much"), {.source = u"Much.Source"});
    EXPECT_EQ(error.Saved().description, full.description);
    EXPECT_EQ(error.Saved().source, full.source);
}

TEST_F(SaveErrorTest, AnEmptyDescriptionIsNotAttached) {
    error.KWO_SaveError(Current(13, u"one"), {.source = u"s"});
    error.KWO_SaveError(Current(0, u""), {.source = u"s"});
    EXPECT_EQ(error.Saved().description, u"one");
}

TEST_F(SaveErrorTest, ErrorsThatNobodyReplacesDoNotGrowForEver) {
    for (int n = 0; n < 5'000; ++n)
        error.KWO_SaveError(Current(13, u"Type mismatch"), {.source = u"s" + Decimal(n)});
    EXPECT_LT(error.Saved().description.size(), 10'000u);
    EXPECT_LT(error.Saved().source.size(), 10'000u);
}

TEST_F(SaveErrorTest, WritesALineWithTheSourceWhenItIsNotTheRoutineOnTop) {
    error.KWO_SaveError(Current(13, u"Type mismatch"), {.source = u"KWOTimer.AddAlarm"});
    EXPECT_EQ(trace.lines, (std::vector<Text>{u"Attached error #13: Type mismatch; Source=KWOTimer.AddAlarm"}));
}

TEST_F(SaveErrorTest, WritesNoLineWithoutANumberOrWhenToldNotTo) {
    error.KWO_SaveError(Current(0, u"nothing"), {.source = u"s"});
    error.KWO_SaveError(Current(13, u"a"), {.source = u"s", .writeTrace = false});
    EXPECT_TRUE(trace.lines.empty());
}

TEST_F(SaveErrorIntended, TheLineWithoutAPlaceForTheSourceCarriesItAtTheEnd) {
    trace.KWO_RoutinePush(u"KWOTimer.AddAlarm");
    error.KWO_SaveError(Current(13, u"Type mismatch"), {});
    EXPECT_EQ(trace.lines, (std::vector<Text>{u"Attached error #13: Type mismatch KWOTimer.AddAlarm"}));
}

TEST_F(SaveErrorTest, RaisesAtOnceOnRequestWithEverythingSaved) {
    const ComponentError raised = Raised([&] {
        error.KWO_SaveError({13, {}, u"a", u"x.hlp", 7}, {.source = u"s", .raiseNow = true});
    });
    EXPECT_EQ(raised.number, 13);
    EXPECT_EQ(raised.source, u"s");
    EXPECT_EQ(raised.description, u"a");
    EXPECT_EQ(raised.helpFile, u"x.hlp");
    EXPECT_EQ(raised.helpContext, 7);
}

TEST_F(RaiseSavedErrorTest, WithNothingSavedRaisesTheNumberForThat) {
    EXPECT_EQ(Raised([&] { error.KWO_RaiseSavedError(); }).number, -2147220494);
}

TEST_F(RaiseSavedErrorTest, ASavedErrorWithoutANumberGetsThatNumberForGood) {
    error.KWO_SaveError(Current(0, u"It failed"), {.source = u"KWOTimer.AddAlarm"});
    const ComponentError raised = Raised([&] { error.KWO_RaiseSavedError(); });
    EXPECT_EQ(raised.number, -2147220494);
    EXPECT_EQ(raised.description, u"It failed");
    EXPECT_EQ(raised.source, u"KWOTimer.AddAlarm");
    EXPECT_EQ(error.Saved().number, -2147220494);
    EXPECT_EQ(trace.lines, (std::vector<Text>{u"Raising error #-2147220494: It failed; Source=KWOTimer.AddAlarm"}));
}

TEST_F(RaiseSavedErrorTest, RaisesTheHelpAsWell) {
    error.KWO_SaveError({13, {}, u"a", u"x.hlp", 7}, {.source = u"s"});
    const ComponentError raised = Raised([&] { error.KWO_RaiseSavedError(); });
    EXPECT_EQ(raised.helpFile, u"x.hlp");
    EXPECT_EQ(raised.helpContext, 7);
}

TEST_F(RaiseSavedErrorTest, RaisesWhatWasSavedAsOftenAsAsked) {
    error.KWO_SaveError(Current(13, u"Type mismatch"), {.source = u"KWOTimer.AddAlarm"});
    for (int n = 0; n < 2; ++n) {
        const ComponentError raised = Raised([&] { error.KWO_RaiseSavedError(); });
        EXPECT_EQ(raised.number, 13);
        EXPECT_EQ(raised.source, u"KWOTimer.AddAlarm");
        EXPECT_EQ(raised.description, u"Type mismatch");
    }
}

TEST_F(RaiseSavedErrorTest, WritesALineWithABlankBehindTheColon) {
    error.KWO_SaveError(Current(13, u"Type mismatch"), {.source = u"KWOTimer.AddAlarm", .writeTrace = false});
    Raised([&] { error.KWO_RaiseSavedError(); });
    trace.KWO_RoutinePush(u"KWOTimer.AddAlarm");
    Raised([&] { error.KWO_RaiseSavedError(); });
    EXPECT_EQ(trace.lines, (std::vector<Text>{u"Raising error #13: Type mismatch; Source=KWOTimer.AddAlarm",
                                              u"Raising error #13: Type mismatch"}));
}

TEST_F(AppErrorTest, ShowsWhatIsSavedLineByLine) {
    error.KWO_SaveError(Current(13, u"Type mismatch"), {.source = u"KWOTimer.AddAlarm", .writeTrace = false});
    Text prompt, title;
    desktop.windows.onAsk = [&](const auto& question) {
        prompt = question.prompt;
        title = question.title;
        EXPECT_EQ(question.style, 0x10000u | 48u);
        return 1;
    };

    error.KWO_AppError({}, u"unused", 48, false, false);

    EXPECT_EQ(prompt,
              u"An internal application error has occurred.\r\n\r\nError source: KWOTimer.AddAlarm\r\n"
              u"Err number:13\r\nType mismatch\r\n");
    EXPECT_EQ(title, u"Host Suite Application Error: HOSTAPP");
    ASSERT_GE(trace.lines.size(), 1u);
    EXPECT_EQ(trace.lines.front(), prompt);
}

TEST_F(AppErrorTest, LeavesOutWhatIsNotSavedAndTakesTheTablesHeading) {
    Table table;
    error.SetMessages(&table);
    Text prompt;
    desktop.windows.onAsk = [&](const auto& question) { return prompt = question.prompt, 1; };
    error.KWO_AppError({}, u"", 16, false, false);
    EXPECT_EQ(prompt, u"message 1900\r\n\r\n");
}

TEST_F(AppErrorTest, AttachesTheCurrentErrorOnRequest) {
    error.KWO_AppError(Current(6, u"Overflow"), u"GetVersionEx failed.", 16, false, true);
    EXPECT_EQ(error.Saved().number, 6);
    EXPECT_EQ(error.Saved().description, u"Overflow\r\nGetVersionEx failed.");
}

TEST_F(AppErrorTest, TheCurrentErrorIsAttachedToTheOneBeforeItAndShownWithIt) {
    error.KWO_SaveError(Current(13, u"Type mismatch"), {.source = u"KWOTimer.AddAlarm", .writeTrace = false});
    Text prompt;
    desktop.windows.onAsk = [&](const auto& question) { return prompt = question.prompt, 1; };
    error.KWO_AppError(Current(6, u"Overflow"), u"GetVersionEx failed.", 16, false, true);
    EXPECT_EQ(prompt,
              u"An internal application error has occurred.\r\n\r\nError source: KWOTimer.AddAlarm\r\n"
              u"Err number:13\r\nType mismatch. Overflow\r\nGetVersionEx failed.\r\n");
    EXPECT_EQ(error.Saved().number, 13);
}

TEST_F(AppErrorTest, AnyOtherStyleBecomesStop) {
    struct Row {
        std::int16_t asked;
        std::uint32_t shown;
    };
    for (const Row& row : {Row{0, 0}, Row{16, 16}, Row{48, 48}, Row{64, 64}, Row{1, 16}, Row{15, 16}, Row{17, 16},
                           Row{32, 16}, Row{-1, 16}, Row{65, 16}}) {
        desktop.windows.onAsk = [&](const auto& question) {
            EXPECT_EQ(question.style, 0x10000u | row.shown) << "asked " << row.asked;
            return 1;
        };
        error.KWO_AppError({}, u"", row.asked, false, false);
    }
}

TEST_F(AppErrorTest, BoxesForTheDevelopmentEnvironmentAreShownOnlyThere) {
    error.KWO_AppError(Current(6, u"Overflow"), u"", 16, true, true);
    EXPECT_TRUE(desktop.log.Starting("Ask").empty());
    EXPECT_EQ(error.Saved().number, 0);
}

TEST_F(AppErrorTest, BoxesForTheDevelopmentEnvironmentAreShownThere) {
    desktop.host.moduleFileName = u"C:\\Tools\\kwodev.exe";
    error.KWO_AppError({}, u"", 16, true, false);
    EXPECT_EQ(desktop.log.Starting("Ask").size(), 1u);
}

}  // namespace
}  // namespace kwo::frame
