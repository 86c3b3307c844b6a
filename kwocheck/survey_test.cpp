#include "kwocheck/survey.h"

#include <gtest/gtest.h>

#include "kwocheck/installed_fixture.h"

namespace kwocheck {
namespace {

using SurveyTest = Installed;
using Texts = std::vector<Text>;

TEST_F(SurveyTest, OwnBitnessComesFirst) {
    system.here.own = Bitness::k32;

    const Facts facts = Gathered();

    ASSERT_EQ(facts.views.size(), 2u);
    EXPECT_EQ(facts.views[0].bitness, Bitness::k32);
    EXPECT_EQ(facts.views[1].bitness, Bitness::k64);
    EXPECT_EQ(facts.views[0].libraries[0].classes[0].entries[0].path, u"C:\\KWO\\x86\\KWOUtil.dll");
    EXPECT_EQ(facts.views[1].libraries[0].classes[0].entries[0].path, u"C:\\KWO\\x64\\KWOUtil.dll");
    EXPECT_EQ(facts.views[0].libraries[0].entries[0].path, u"C:\\KWO\\x86\\KWOUtil.dll");
}

TEST_F(SurveyTest, Windows32HasOneView) {
    system.here.own = Bitness::k32;
    system.here.isWindows64 = false;

    EXPECT_EQ(Gathered().views.size(), 1u);
}

TEST_F(SurveyTest, EveryClassOfTheOwnBitnessIsCreatedOnce) {
    const Facts facts = Gathered();

    EXPECT_EQ(system.created, (Texts{u"KWOUtil.KWOTimer", u"KWOUtil.KWORegistry", u"KWOInit.KWOInitialize"}));
    EXPECT_TRUE(facts.views[0].libraries[0].classes[0].creation.has_value());
    EXPECT_FALSE(facts.views[1].libraries[0].classes[0].creation.has_value());
}

TEST_F(SurveyTest, ClassesThatAreNotRegisteredAreTried) {
    system.registry.clear();

    Gathered();

    EXPECT_EQ(system.created.size(), 3u);
}

TEST_F(SurveyTest, CodeOfSomebodyElseIsNotRun) {
    system.Put(Scope::kMachine, Bitness::k64, RecordedSystem::ServerKey(Timer()), u"C:\\Other\\other.dll");
    system.files[u"C:\\Other\\other.dll"] = {FileFacts::State::kThere, Bitness::k64, u"Other", u"1.0.0.0", false};
    system.Put(Scope::kUser, Bitness::k64, u"KWOUtil.KWORegistry\\CLSID", u"{C001}");

    Gathered();

    EXPECT_EQ(system.created, Texts{u"KWOInit.KWOInitialize"});
}

TEST_F(SurveyTest, AnElevatedProgramMayRunWhatItsEntriesLeadTo) {
    system.here.isElevated = true;
    system.Put(Scope::kUser, Bitness::k64, u"KWOUtil.KWORegistry\\CLSID", u"{C001}");

    Gathered();

    EXPECT_EQ(system.created.size(), 3u);
}

TEST_F(SurveyTest, TheUsersEntryComesFirst) {
    system.Register(Component(), Scope::kUser, Bitness::k64, u"C:\\Mine\\KWOUtil.dll");
    system.files[u"C:\\Mine\\KWOUtil.dll"] = Ours(Bitness::k64);

    const LibraryFacts library = Gathered().views[0].libraries[0];

    ASSERT_EQ(library.classes[0].entries.size(), 2u);
    EXPECT_EQ(library.classes[0].entries[0].scope, Scope::kUser);
    EXPECT_EQ(library.classes[0].entries[0].path, u"C:\\Mine\\KWOUtil.dll");
    EXPECT_EQ(library.classes[0].entries[1].scope, Scope::kMachine);
    EXPECT_EQ(library.classes[0].names.size(), 2u);
    ASSERT_EQ(library.entries.size(), 2u);
    EXPECT_EQ(library.entries[0].scope, Scope::kUser);
}

TEST_F(SurveyTest, AnEntryThatMayNotBeReadIsListed) {
    system.Forbid(Scope::kMachine, Bitness::k64, RecordedSystem::ServerKey(Timer()));

    const ClassFacts timer = Gathered().views[0].libraries[0].classes[0];

    ASSERT_EQ(timer.entries.size(), 1u);
    EXPECT_TRUE(timer.entries[0].isDenied);
    EXPECT_EQ(timer.entries[0].file.state, FileFacts::State::kMissing);
}

TEST_F(SurveyTest, TheMessageFileIsTheOneBesideTheCompanion) {
    system.texts[MessageFile(Bitness::k64)] = "[KWOUtil]\nbad\n";

    const Facts facts = Gathered();

    ASSERT_TRUE(facts.views[0].messageFile.has_value());
    EXPECT_EQ(facts.views[0].messageFile->path, MessageFile(Bitness::k64));
    EXPECT_EQ(facts.views[0].messageFile->problems.size(), 1u);
    EXPECT_EQ(facts.views[1].messageFile->problems.size(), 0u);
}

TEST_F(SurveyTest, TheMessageFileOfACompanionInQuotationMarks) {
    const Text quoted = u'"' + Dll(Companion(), Bitness::k64) + u'"';
    system.Put(Scope::kMachine, Bitness::k64, RecordedSystem::ServerKey(Companion().classes[0]), quoted);
    system.files[quoted] = system.files[Dll(Companion(), Bitness::k64)];
    system.files[quoted].path = Dll(Companion(), Bitness::k64);

    EXPECT_EQ(Gathered().views[0].messageFile->path, MessageFile(Bitness::k64));
}

TEST_F(SurveyTest, WithoutTheCompanionsFileThereIsNoMessageFile) {
    system.files.erase(Dll(Companion(), Bitness::k64));
    system.Unregister(Bitness::k32);

    const Facts facts = Gathered();

    EXPECT_FALSE(facts.views[0].messageFile.has_value());
    EXPECT_FALSE(facts.views[1].messageFile.has_value());
}

TEST_F(SurveyTest, CopiesBesideThisProgramAreNamed) {
    EXPECT_TRUE(Gathered().copies.empty());
    system.files[u"C:\\tools\\KWOUtil.dll"] = Ours(Bitness::k64);

    EXPECT_EQ(Gathered().copies, Texts{u"C:\\tools\\KWOUtil.dll"});
}

}  // namespace
}  // namespace kwocheck
