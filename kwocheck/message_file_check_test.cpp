#include "kwocheck/message_file_check.h"

#include <gtest/gtest.h>

#include "kwocheck/recorded_system.h"

namespace kwocheck {
namespace {

using Texts = std::vector<Text>;

TEST(MessageFileCheck, AGoodFileHasNoProblems) {
    const MessageFileFacts facts = CheckMessages("[KWOUtil]\n1 = a %1\n[KWOUtil 0407]\n1 = b %1\n", u"x.nls");

    EXPECT_EQ(facts.state, FileFacts::State::kThere);
    EXPECT_FALSE(facts.isRefused);
    EXPECT_EQ(facts.problems, Texts{});
    EXPECT_EQ(facts.remarks, Texts{});
}

TEST(MessageFileCheck, BadLinesHaveTheirReasons) {
    const MessageFileFacts facts = CheckMessages("[KWOUtil]\nx = y\n2 = \\q\n\xFF\n", u"x.nls");

    EXPECT_EQ(facts.problems,
              (Texts{u"x.nls(2): there is no number",
                     u"x.nls(3): after a backslash only n, another backslash or, at an end of the text, s may stand",
                     u"x.nls(4): it is not well-formed UTF-8"}));
    EXPECT_FALSE(facts.isRefused);
}

TEST(MessageFileCheck, ARefusedFileSaysWhyAtTheEnd) {
    const MessageFileFacts facts = CheckMessages("\xFF\xFE", u"x.nls");

    EXPECT_TRUE(facts.isRefused);
    ASSERT_EQ(facts.problems.size(), 1u);
    EXPECT_NE(facts.problems[0].find(u"it is UTF-16 text, but must be UTF-8"), Text::npos);
}

TEST(MessageFileCheck, MissingTranslationsAreRemarks) {
    const MessageFileFacts facts =
        CheckMessages("[KWOUtil]\n1 = a\n2 = b\n3 = c\n[KWOUtil 0407]\n2 = b\n[Other 040A]\n1 = x\n", u"x.nls");

    EXPECT_EQ(facts.problems, Texts{});
    EXPECT_EQ(facts.remarks, Texts{u"x.nls: [kwoutil 0407] has no text for 1, 3"});
}

TEST(MessageFileCheck, MarkersOfATranslationAreThoseOfTheOriginal) {
    const MessageFileFacts facts = CheckMessages(
        "[KWOUtil]\n1 = %1 of %2\n2 = 50 %\n3 = %1\n[KWOUtil 0407]\n1 = %2 von %1\n2 = 50 %1\n3 = nichts\n", u"x.nls");

    EXPECT_EQ(facts.problems, (Texts{u"x.nls(7): the text has %1, the one without a language has no marker",
                                     u"x.nls(8): the text has no marker, the one without a language has %1"}));
}

TEST(MessageFileCheck, SeveralMarkersAreListed) {
    const MessageFileFacts facts = CheckMessages("[P]\n1 = %9 %3 %1 %0 %a %: %\n[P 0407]\n1 = x\n", u"x.nls");

    EXPECT_EQ(facts.problems, Texts{u"x.nls(4): the text has no marker, the one without a language has %1 %3 %9"});
}

TEST(MessageFileCheck, AFileThatCannotBeReadKeepsItsState) {
    RecordedSystem system;
    EXPECT_EQ(CheckMessageFile(system, u"x.nls").state, FileFacts::State::kMissing);
    system.texts[u"x.nls"] = "bad\n";
    EXPECT_EQ(CheckMessageFile(system, u"x.nls").problems.size(), 1u);
    system.readState = FileFacts::State::kDenied;
    EXPECT_EQ(CheckMessageFile(system, u"x.nls").state, FileFacts::State::kDenied);
    EXPECT_EQ(CheckMessageFile(system, u"x.nls").path, u"x.nls");
}

}  // namespace
}  // namespace kwocheck
