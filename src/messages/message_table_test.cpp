#include "messages/message_table.h"

#include <gtest/gtest.h>

#include <limits>
#include <optional>
#include <vector>

#include "component/component.h"
#include "platform/component_error.h"
#include "platform/simulated/simulated_desktop.h"
#include "support/raised.h"

namespace kwo::messages {
namespace {

using platform::ComponentError;
using platform::Empty;
using platform::ErrorValue;
using platform::ForeignRef;
using platform::HostObjectRef;
using platform::Int16Array;
using platform::Null;
using platform::TextArray;
using platform::Variant;
using test_support::Raised;

constexpr std::int32_t kFirst = 1899;

/// A component whose companion answers as a test wants.
class Messages : public testing::Test {
protected:
    Messages() {
        desktop.components.Install(u"KWOInit.KWOInitialize", [this] {
            auto companion = desktop.MakeObject();
            companion->SetMethod(u"KWO_MsgTableSize", [this](std::span<Variant> given) { return Size(given); },
                                 {u"ProgramName", u"MsgFilePath", u"IdxArrayStart", u"IdxArrayEnd", u"TextArraySize"});
            companion->SetMethod(u"KWO_MsgTableLoad", [this](std::span<Variant> given) { return Load(given); },
                                 {u"Language", u"IdxArray", u"TextArray"});
            made = companion;
            return companion;
        });
    }

    Variant Size(std::span<Variant> given) {
        askedName = std::get<Text>(given[0]);
        askedPath = std::get<Text>(given[1]);
        given[2] = start;
        given[3] = end;
        given[4] = std::int32_t{100};
        if (sizeFailure.number != 0) throw sizeFailure;
        return sizeResult;
    }
    Variant Load(std::span<Variant> given) {
        language = std::get<std::int32_t>(given[0]);
        indexGiven = std::dynamic_pointer_cast<const Int16Array>(std::get<ForeignRef>(given[1]));
        textsGiven = std::dynamic_pointer_cast<const TextArray>(std::get<ForeignRef>(given[2]));
        if (loadFailure.number != 0) throw loadFailure;
        auto filled = std::make_shared<TextArray>();
        filled->lowerBound = textsGiven->lowerBound;
        filled->items = textsGiven->items;
        for (std::size_t i = 0; i < texts.size() && i < filled->items.size(); ++i)
            filled->items[i] = texts[i];
        given[2] = replacement ? *replacement : Variant(ForeignRef(filled));
        return Empty{};
    }
    void InDevelopment() { desktop.host.moduleFileName = u"C:\\Tools\\KWODEV.EXE"; }
    Text Get(std::int32_t number, std::vector<Variant> args = {}) { return messages.KWO_GetMsg(number, args); }

    platform::simulated::SimulatedDesktop desktop;
    component::Component component{desktop.Services()};
    MessageTable& messages = component.messages;

    Variant sizeResult = true;
    std::int32_t start = kFirst;
    std::int32_t end = kFirst + 3;
    std::vector<Text> texts = {u"first", u"%2 then %1", u"", u"last"};
    std::optional<Variant> replacement;
    ComponentError sizeFailure;
    ComponentError loadFailure;

    Text askedName;
    Text askedPath;
    std::int32_t language = 0;
    std::shared_ptr<const Int16Array> indexGiven;
    std::shared_ptr<const TextArray> textsGiven;
    std::weak_ptr<platform::simulated::SimulatedObject> made;
};

TEST_F(Messages, ABuiltInTextTakesThePlaceOfAMissingOne) {
    const std::vector<Text> values = {u"a", u"b"};
    EXPECT_EQ(messages.TextOrBuiltIn(kFirst + 1, u"built in", values), u"b then a") << "loads the table";
    EXPECT_EQ(messages.TextOrBuiltIn(kFirst + 2, u"%2, built in", values), u"b, built in") << "an empty text";
    EXPECT_EQ(messages.TextOrBuiltIn(kFirst - 1, u"built in"), u"built in");
    EXPECT_EQ(messages.TextOrBuiltIn(kFirst + 4, u"built in"), u"built in");
}

TEST_F(Messages, ABuiltInTextDoesWithoutATable) {
    sizeFailure = {1234, u"companion", u"broken", {}, 0};
    EXPECT_EQ(messages.TextOrBuiltIn(kFirst, u"built in"), u"built in");
    EXPECT_EQ(messages.KWO_GetMsg(kFirst), u"Undefined Message");
}

TEST_F(Messages, AreUndefinedBeforeTheyAreLoaded) {
    EXPECT_EQ(Get(kFirst), u"Undefined Message");
    EXPECT_EQ(messages.LoadedMessage(kFirst), std::nullopt);
    EXPECT_TRUE(desktop.log.Starting("CreateObject").empty());
}

TEST_F(Messages, AreLoadedByTheCompanionOnce) {
    messages.KWOInitialize();
    messages.KWOInitialize();

    EXPECT_EQ(desktop.log.Starting("CreateObject").size(), 1u);
    EXPECT_EQ(Get(kFirst), u"first");
    EXPECT_EQ(messages.LoadedMessage(kFirst), u"first");
    EXPECT_TRUE(made.expired()) << "the companion is let go";
}

TEST_F(Messages, CompanionGetsTheLanguageAndTwoArrays) {
    desktop.locale.settings[1] = u"0407";

    messages.KWOInitialize();

    EXPECT_EQ(language, 0x407);
    ASSERT_NE(indexGiven, nullptr);
    EXPECT_EQ(indexGiven->lowerBound, 1);
    EXPECT_EQ(indexGiven->items.size(), 1u);
    ASSERT_NE(textsGiven, nullptr);
    EXPECT_EQ(textsGiven->lowerBound, kFirst);
    EXPECT_EQ(textsGiven->items.size(), 4u);
    EXPECT_TRUE(component.locale.LocaleLoaded());
    EXPECT_EQ(component.apiResult.last, -1);
}

TEST_F(Messages, AreUndefinedOutsideTheTableAndWhereThereIsNoText) {
    messages.KWOInitialize();

    EXPECT_EQ(Get(kFirst - 1), u"Undefined Message");
    EXPECT_EQ(Get(kFirst + 2), u"Undefined Message");
    EXPECT_EQ(Get(kFirst + 3), u"last");
    EXPECT_EQ(Get(kFirst + 4), u"Undefined Message");
    EXPECT_EQ(Get(std::numeric_limits<std::int32_t>::min()), u"Undefined Message");
    EXPECT_EQ(Get(std::numeric_limits<std::int32_t>::max()), u"Undefined Message");
    EXPECT_EQ(messages.LoadedMessage(kFirst + 2), u"Undefined Message");
}

TEST_F(Messages, TableMayBeginBelowZero) {
    start = -2;
    end = 1;
    messages.KWOInitialize();

    EXPECT_EQ(Get(-2), u"first");
    EXPECT_EQ(Get(1), u"last");
    EXPECT_EQ(Get(-3), u"Undefined Message");
}

TEST_F(Messages, MarkersAreReplacedByNumber) {
    struct Case {
        Text text;
        std::vector<Variant> args;
        Text filled;
    };
    const Variant a = Text(u"a");
    const Variant b = Text(u"b");
    const Case cases[] = {
        {u"%2 then %1", {a, b}, u"b then a"},
        {u"%1, %2 and %3", {a, b}, u"a, b and %3"},
        {u"%1%1 %1", {a}, u"aa a"},
        {u"%1 %10", {a}, u"a a0"},
        {u"%10 and %9", {a, a, a, a, a, a, a, a, b, b}, u"a0 and b"},
        {u"%1 and %2", {Text(u"%2"), Text(u"%1")}, u"%2 and %1"},
        {u"%1 %1", {Text(u"%1%1")}, u"%1%1 %1%1"},
        {u"%%12", {Text(u"%"), Text(u"x")}, u"%%2"},
        {u"%", {a}, u"%"},
        {u"% 1 %01", {a}, u"% 1 %01"},
        {u"no marker", {a}, u"no marker"},
        {u"100% of %1%", {a}, u"100% of a%"},
        {u"%0 %1", {}, u"%0 %1"},
        {u"%1", {Text()}, u""},
        {u"%1 %2 %3", {std::int32_t{-5}, 2.5, true}, u"-5 2.5 True"},
        {u"#%1", {ErrorValue{-2147220480}}, u"#-2147220480"},
        {u"#%1", {ErrorValue{13}}, u"#13"},
        {u"%1|", {Empty{}}, u"|"},
    };
    for (const Case& row : cases) {
        texts[0] = row.text;
        component::Component other(desktop.Services());
        other.messages.KWOInitialize();
        EXPECT_EQ(other.messages.KWO_GetMsg(kFirst, row.args), row.filled);
    }
}

TEST_F(Messages, ValuesAreFilledIntoWhatIsUndefinedToo) {
    EXPECT_EQ(Get(1, {Text(u"a")}), u"Undefined Message");
}

TEST_F(Messages, ValueWithoutATextIsAMismatch) {
    for (const Variant& value : {Variant(Null{}), Variant(HostObjectRef())})
        EXPECT_EQ(Raised([&] { Get(kFirst, {value}); }).number, 13);
}

TEST_F(Messages, ValueIsConvertedAlsoWhereNoMarkerAsksForIt) {
    const HostObjectRef object = desktop.MakeObject();
    EXPECT_EQ(Raised([&] { Get(kFirst, {Text(u"a"), object}); }).number, 13);
}

TEST_F(Messages, LookupsAreFilledAsWell) {
    messages.KWOInitialize();
    const Text values[] = {u"a", u"b"};

    EXPECT_EQ(messages.LoadedMessage(kFirst + 1, values), u"b then a");
    EXPECT_EQ(messages.LoadedMessage(kFirst - 1, values), u"Undefined Message");
}

TEST_F(Messages, LoadedTextsReplaceTheBuiltInOnes) {
    EXPECT_EQ(component.error.Message(kFirst, u"built in"), u"built in");

    messages.KWOInitialize();

    EXPECT_EQ(component.error.Message(kFirst, u"built in"), u"first");
}

TEST_F(Messages, MissingFileLeavesTheTableEmptyAndTheBuiltInTexts) {
    sizeResult = false;
    component.apiResult.last = 7;

    messages.KWOInitialize();

    EXPECT_EQ(component.apiResult.last, 0);
    EXPECT_EQ(Get(1), u"Undefined Message");
    EXPECT_EQ(Get(kFirst), u"Undefined Message");
    EXPECT_EQ(messages.LoadedMessage(kFirst), std::nullopt);
    EXPECT_EQ(component.error.Message(kFirst, u"built in"), u"built in");
    EXPECT_EQ(textsGiven, nullptr);

    sizeResult = true;
    messages.KWOInitialize();
    EXPECT_EQ(Get(kFirst), u"Undefined Message") << "it is not tried again";
}

TEST_F(Messages, AnyTrueResultIsASuccess) {
    for (const Variant& result : {Variant(std::int32_t{1}), Variant(std::int16_t{-1}), Variant(Text(u"True"))}) {
        sizeResult = result;
        component::Component other(desktop.Services());
        other.messages.KWOInitialize();
        EXPECT_EQ(other.messages.KWO_GetMsg(kFirst), u"first");
        EXPECT_EQ(other.apiResult.last, -1);
    }
}

TEST_F(Messages, CompanionWithoutAResultFoundNoFile) {
    sizeResult = Empty{};
    messages.KWOInitialize();

    EXPECT_EQ(Get(kFirst), u"Undefined Message");
    EXPECT_EQ(messages.LoadedMessage(kFirst), std::nullopt);
}

TEST_F(Messages, TableOfOneMessageIsOne) {
    start = end = 7;
    messages.KWOInitialize();

    EXPECT_EQ(Get(6), u"Undefined Message");
    EXPECT_EQ(Get(7), u"first");
    EXPECT_EQ(Get(8), u"Undefined Message");
}

TEST_F(Messages, LanguageThatIsUnknownIsZero) {
    desktop.locale.settings.erase(1);
    language = 1;
    messages.KWOInitialize();

    EXPECT_EQ(language, 0);
}

TEST_F(Messages, FileIsBesideTheHost) {
    desktop.host.folder = u"C:\\Apps";
    messages.KWOInitialize();

    EXPECT_EQ(askedPath, u"C:\\Apps\\KWOInit.nls");
    EXPECT_EQ(messages.MsgFilePath(), u"C:\\Apps\\KWOInit.nls");
}

TEST_F(Messages, FileMayBeSetBefore) {
    InDevelopment();
    messages.SetMsgFilePath(u"D:\\texts.nls");
    messages.KWOInitialize();

    EXPECT_EQ(askedPath, u"D:\\texts.nls");
}

class DevelopmentPathIntended : public Messages {};

TEST_F(DevelopmentPathIntended, FallsBackToTheNextReleaseAndThenToAFixedDrive) {
    const Text beside = desktop.host.folder + u"\\KWOInit.nls";
    const Text next = desktop.host.folder + u"\\..\\nextrelease\\KWOInit.nls";
    const auto asked = [&] {
        component::Component other(desktop.Services());
        other.messages.KWOInitialize();
        return askedPath;
    };
    EXPECT_EQ(asked(), beside) << "a built component does not look";

    InDevelopment();
    // A reader would expect the file beside the host, and certainly no drive of one company.
    EXPECT_EQ(asked(), u"H:\\Corvath\\nextrelease\\KWOInit.nls");
    desktop.files.AddFile(next);
    EXPECT_EQ(asked(), next);
    desktop.files.AddFolder(beside);
    EXPECT_EQ(asked(), next) << "a folder is no file";
    desktop.files.Remove(beside);
    desktop.files.AddFile(beside);
    EXPECT_EQ(asked(), beside);
}

TEST_F(Messages, ProgramNameOfTheComponentIsAskedFor) {
    component.SetProgramName();
    messages.KWOInitialize();

    EXPECT_EQ(askedName, u"KWOUtil");
}

TEST_F(Messages, ProgramNameIsTheHostsWhereThereIsNone) {
    desktop.host.executableName = u"ACCOUNTS";
    messages.KWOInitialize();

    EXPECT_EQ(askedName, u"ACCOUNTS");
    EXPECT_EQ(component.ProgramName(), u"ACCOUNTS");
}

TEST_F(Messages, ProgramNameInDevelopmentLacksItsFirstTwoCharacters) {
    InDevelopment();
    struct Case {
        Text executable, asked;
    };
    for (const Case& row : {Case{u"~dAccounts", u"Accounts"}, Case{u"abc", u"c"}, Case{u"ab", u""}, Case{u"a", u""}}) {
        desktop.host.executableName = row.executable;
        component::Component other(desktop.Services());
        other.messages.KWOInitialize();
        EXPECT_EQ(askedName, row.asked);
    }
}

TEST_F(Messages, TwoProgramsReadTheMessagesOfTheirCounterparts) {
    struct Case {
        Text executable, asked;
    };
    for (const Case& row : {Case{u"Belloc", u"Daxter"}, Case{u"BELLOC", u"Daxter"}, Case{u"belwin", u"Daxwin"},
                            Case{u"Belwin2", u"Belwin2"}, Case{u"Bell", u"Bell"}}) {
        desktop.host.executableName = row.executable;
        component::Component other(desktop.Services());
        other.messages.KWOInitialize();
        EXPECT_EQ(askedName, row.asked);
    }
}

TEST_F(Messages, FailuresOfTheCompanionReachTheCallerAndItIsTriedAgainForTheNextObject) {
    desktop.FailCall("CoCreateInstance", 1, 1);
    EXPECT_EQ(Raised([&] { messages.KWOInitialize(); }).number, 429);
    component.SetProgramName();

    component.apiResult.last = 7;
    sizeFailure = {5, u"companion", u"size", {}, 0};
    EXPECT_EQ(Raised([&] { messages.KWOInitialize(); }).description, u"size");
    EXPECT_EQ(component.apiResult.last, 7);
    EXPECT_TRUE(made.expired());
    sizeFailure = {};
    component.SetProgramName();

    loadFailure = {6, u"companion", u"load", {}, 0};
    EXPECT_EQ(Raised([&] { messages.KWOInitialize(); }).description, u"load");
    EXPECT_EQ(component.apiResult.last, -1);
    EXPECT_EQ(messages.LoadedMessage(kFirst), std::nullopt);
    EXPECT_EQ(Get(kFirst), u"Undefined Message");
    EXPECT_TRUE(made.expired());
    loadFailure = {};
    component.SetProgramName();

    messages.KWOInitialize();
    EXPECT_EQ(Get(kFirst), u"first");
}

TEST_F(Messages, AFailureIsRememberedUntilTheNextObjectIsCreated) {
    component.SetProgramName();
    loadFailure = {-2147191295, u"companion", u"too large", u"x.hlp", 7};
    for (int lookUp = 0; lookUp < 3; ++lookUp) {
        const ComponentError raised = Raised([&] { messages.KWOInitialize(); });
        EXPECT_EQ(raised.number, -2147191295);
        EXPECT_EQ(raised.source, u"companion");
        EXPECT_EQ(raised.description, u"too large");
        EXPECT_EQ(raised.helpFile, u"x.hlp");
        EXPECT_EQ(raised.helpContext, 7);
    }
    EXPECT_EQ(desktop.log.Starting("CreateObject").size(), 1u);

    loadFailure = {};
    component.SetProgramName();
    messages.KWOInitialize();
    EXPECT_EQ(desktop.log.Starting("CreateObject").size(), 2u);
    EXPECT_EQ(Get(kFirst), u"first");

    component.SetProgramName();
    messages.KWOInitialize();
    EXPECT_EQ(desktop.log.Starting("CreateObject").size(), 2u) << "what is loaded stays";
}

TEST_F(Messages, AnotherFileIsTriedAfterAFailure) {
    sizeFailure = {5, u"companion", u"size", {}, 0};
    EXPECT_EQ(Raised([&] { messages.KWOInitialize(); }).number, 5);
    sizeFailure = {};
    messages.SetMsgFilePath(u"D:\\texts.nls");
    messages.KWOInitialize();
    EXPECT_EQ(Get(kFirst), u"first");
}

TEST_F(Messages, MachineWithoutTheCompanionCannotLoad) {
    platform::simulated::SimulatedDesktop bare;
    component::Component other(bare.Services());

    EXPECT_EQ(Raised([&] { other.messages.KWOInitialize(); }).number, 429);
    EXPECT_EQ(other.messages.LoadedMessage(kFirst), std::nullopt);
    EXPECT_EQ(other.error.Message(kFirst, u"built in"), u"built in");
}

TEST_F(Messages, CompanionThatLacksAMemberIsRefused) {
    desktop.components.Install(u"KWOInit.KWOInitialize", [this] { return desktop.MakeObject(); });

    EXPECT_EQ(Raised([&] { messages.KWOInitialize(); }).number, 438);
}

TEST_F(Messages, CompanionThatAnswersNonsenseIsRefused) {
    struct Case {
        std::int32_t start, end, number;
    };
    constexpr std::int32_t kMost = std::numeric_limits<std::int32_t>::max();
    for (const Case& row : {Case{5, 4, 9}, Case{-kMost - 1, kMost, 6}, Case{1, 16'000'001, 6}, Case{kMost, 1, 9}}) {
        start = row.start;
        end = row.end;
        component.SetProgramName();
        EXPECT_EQ(Raised([&] { messages.KWOInitialize(); }).number, row.number) << row.start << " to " << row.end;
    }
    start = 1;
    end = 1;
    for (const Variant& value : {Variant(Text(u"x")), Variant(Empty{}), Variant(ForeignRef()),
                                 Variant(ForeignRef(std::make_shared<Int16Array>()))}) {
        replacement = value;
        component.SetProgramName();
        EXPECT_EQ(Raised([&] { messages.KWOInitialize(); }).number, 13);
    }
    replacement.reset();
    for (const Variant& result : {Variant(Text(u"perhaps")), Variant(Null{}), Variant(ErrorValue{5}),
                                  Variant(HostObjectRef()), Variant(ForeignRef(std::make_shared<TextArray>()))}) {
        sizeResult = result;
        component.SetProgramName();
        EXPECT_EQ(Raised([&] { messages.KWOInitialize(); }).number, 13);
    }
    sizeResult = true;
    component.SetProgramName();
    messages.KWOInitialize();
    EXPECT_EQ(Get(1), u"first") << "none of it stays";
}

TEST_F(Messages, BoundsThatAreNoNumbersAreRefused) {
    desktop.components.Install(u"KWOInit.KWOInitialize", [this] {
        auto companion = desktop.MakeObject();
        const auto size = [this](std::span<Variant> given) -> Variant {
            given[2] = given[3] = *replacement;
            return true;
        };
        companion->SetMethod(u"KWO_MsgTableSize", size,
                             {u"ProgramName", u"MsgFilePath", u"IdxArrayStart", u"IdxArrayEnd", u"TextArraySize"});
        return companion;
    });
    for (const Variant& bound : {Variant(Text(u"x")), Variant(Null{}), Variant(ForeignRef())}) {
        replacement = bound;
        component.SetProgramName();
        EXPECT_EQ(Raised([&] { messages.KWOInitialize(); }).number, 13);
    }
    replacement = 3e9;
    component.SetProgramName();
    EXPECT_EQ(Raised([&] { messages.KWOInitialize(); }).number, 6);
}

TEST_F(Messages, ArrayWithoutTextsLeavesAllUndefined) {
    replacement = ForeignRef(std::make_shared<TextArray>());
    messages.KWOInitialize();

    EXPECT_EQ(Get(0), u"Undefined Message");
    EXPECT_EQ(Get(kFirst), u"Undefined Message");
}

TEST_F(Messages, CompanionMayGiveAnArrayOfItsOwn) {
    auto other = std::make_shared<TextArray>();
    other->lowerBound = 10;
    other->items = {u"ten"};
    replacement = ForeignRef(other);
    messages.KWOInitialize();

    EXPECT_EQ(Get(10), u"ten");
    EXPECT_EQ(Get(kFirst), u"Undefined Message");
}

}  // namespace
}  // namespace kwo::messages
