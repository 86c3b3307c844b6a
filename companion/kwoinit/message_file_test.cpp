#include "kwoinit/message_file.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <tuple>

#include "kwoinit/message_errors.h"
#include "kwoinit/recorded_problems.h"

namespace kwo::kwoinit {
namespace {

using Strings = std::vector<std::string>;

/// The text as plain characters; "-" when there is none.
std::string Text1(const MessageFile& file, TextView program, std::uint16_t language, std::int32_t number) {
    const MessageFile::Texts texts = file.In(program, language);
    const TextView text = texts[number];
    return text.empty() ? "-" : std::string(text.begin(), text.end());
}

struct Opened {
    explicit Opened(std::string_view bytes) : file(bytes, u"x.nls", problems) {}
    std::string Text(std::uint16_t language, std::int32_t number, TextView program = u"KWOUtil") const {
        return Text1(file, program, language, number);
    }
    RecordedProblems problems;
    MessageFile file;
};

/// The error's number as its offset, 0 when there is none.
std::uint32_t Refusal(std::string_view bytes) {
    RecordedProblems problems;
    try {
        const MessageFile file(bytes, u"C:\\x.nls", problems);
        return 0;
    } catch (const platform::ComponentError& error) {
        EXPECT_EQ(error.source, u"KWOInitialize.KWO_MsgTableSize");
        EXPECT_NE(error.description.find(u"C:\\x.nls"), TextView::npos);
        return static_cast<std::uint32_t>(error.number) - 0x80040000u;
    }
}

TEST(MessageFile, EntriesAreTheTextsThatCountBySectionAndNumber) {
    const Opened opened("[KWOUtil 0407]\n7 = sieben\n3 = drei\n[Other]\nbad\n1 = \\sone\n[KWOUtil 0407]\n3 = again\n");

    std::vector<std::tuple<Text, unsigned, int, unsigned, Text>> entries;
    for (const MessageFile::Entry& one : opened.file.Entries())
        entries.emplace_back(one.program, one.language, one.number, one.line, one.text);

    const decltype(entries) expected = {
        {u"kwoutil", 0x0407u, 3, 3u, u"drei"}, {u"kwoutil", 0x0407u, 7, 2u, u"sieben"}, {u"other", 0u, 1, 6u, u" one"}};
    EXPECT_EQ(entries, expected);
}

TEST(MessageFile, LinesMayEndEitherWayAndAMarkMayStandInFront) {
    for (const char* const bytes :
         {"[KWOUtil]\n1=a\n2=b", "[KWOUtil]\r\n1=a\r\n2=b\r\n", "\xEF\xBB\xBF[KWOUtil]\n1=a\n2=b\n"}) {
        const Opened opened(bytes);
        EXPECT_EQ(opened.problems.lines, Strings{});
        EXPECT_EQ(opened.Text(0x409, 1), "a");
        EXPECT_EQ(opened.Text(0x409, 2), "b");
    }
}

TEST(MessageFile, ProgramsAreFoundInAnyLetterCase) {
    const Opened opened(
        "[kwoUTIL]\n1=a\n[\xC3\x9C"
        "ber 0407]\n2=b\n[\xD0\x94\xD1\x8F]\n3=c\n");

    EXPECT_EQ(opened.Text(0, 1), "a");
    EXPECT_EQ(opened.Text(0x407, 2, u"\u00FCBER"), "b");
    EXPECT_EQ(opened.Text(0x407, 3, u"\u0434\u042F"), "c");
}

TEST(MessageFile, EveryAlphabetsFirstAndLastCapitalEqualsItsSmallLetter) {
    const Opened opened(
        "[AZ]\n1=a\n[\xC3\x80\xC3\x96\xC3\x98\xC3\x9E]\n1=b\n[\xCE\x91\xCE\xA9]\n1=c\n"
        "[\xD0\x80\xD0\x8F]\n1=d\n[\xD0\x90\xD0\xAF]\n1=e\n[@]\n1=f\n[\xC3\x97]\n1=g\n");

    EXPECT_EQ(opened.Text(0, 1, u"az"), "a");
    EXPECT_EQ(opened.Text(0, 1, u"\u00E0\u00F6\u00F8\u00FE"), "b");
    EXPECT_EQ(opened.Text(0, 1, u"\u03B1\u03C9"), "c");
    EXPECT_EQ(opened.Text(0, 1, u"\u0450\u045F"), "d");
    EXPECT_EQ(opened.Text(0, 1, u"\u0430\u044F"), "e");
    EXPECT_EQ(opened.Text(0, 1, u"`"), "-");
    EXPECT_EQ(opened.Text(0, 1, u"\u00F7"), "-");
}

/// The letters of which capital and small are the same, in pairs.
constexpr TextView kCapitals =
    u"ABCDEFGHIJKLMNOPQRSTUVWXYZ"
    u"ÀÁÂÃÄÅÆÇÈÉÊËÌÍÎÏÐÑÒÓÔÕÖØÙÚÛÜÝÞ"
    u"ĀĂĄĆĈĊČĎĐĒĔĖĘĚĜĞĠĢĤĦĨĪĬĮĲĴĶĹĻĽ"
    u"ĿŁŃŅŇŊŌŎŐŒŔŖŘŚŜŞŠŢŤŦŨŪŬŮŰŲŴŶŸŹŻŽΆ"
    u"ΈΉΊΌΎΏΑΒΓΔΕΖΗΘΙΚΛΜΝΞΟΠΡΣΤΥΦΧΨΩΪΫ"
    u"ЀЁЂЃЄЅІЇЈЉЊЋЌЍЎЏ"
    u"АБВГДЕЖЗИЙКЛМНОПРСТУФХЦЧШЩЪЫЬЭЮЯ";
constexpr TextView kSmall =
    u"abcdefghijklmnopqrstuvwxyz"
    u"àáâãäåæçèéêëìíîïðñòóôõöøùúûüýþ"
    u"āăąćĉċčďđēĕėęěĝğġģĥħĩīĭįĳĵķĺļľ"
    u"ŀłńņňŋōŏőœŕŗřśŝşšţťŧũūŭůűųŵŷÿźżžά"
    u"έήίόύώαβγδεζηθικλμνξοπρστυφχψωϊϋ"
    u"ѐёђѓєѕіїјљњћќѝўџ"
    u"абвгдежзийклмнопрстуфхцчшщъыьэюя";

/// A character below 0x800.
std::string Utf8(char16_t c) {
    if (c < 0x80) return {static_cast<char>(c)};
    return {static_cast<char>(0xC0 | c >> 6), static_cast<char>(0x80 | (c & 0x3F))};
}

TEST(MessageFile, CapitalsEqualTheirSmallLettersAndNothingElse) {
    ASSERT_EQ(kCapitals.size(), kSmall.size());
    std::string bytes;
    for (std::size_t pair = 0; pair < kCapitals.size(); ++pair)
        bytes += "[" + Utf8(kCapitals[pair]) + "]\n1=" + std::to_string(pair) + "\n";
    const Opened opened(bytes);

    for (char16_t c = u'A'; c < 0x500; ++c) {
        const std::size_t pair = std::min(kCapitals.find(c), kSmall.find(c));
        EXPECT_EQ(opened.Text(0, 1, TextView(&c, 1)), pair == TextView::npos ? "-" : std::to_string(pair))
            << unsigned{c};
    }
}

constexpr char kLanguages[] =
    "[KWOUtil]\n1=none\n2=none\n3=none\n4=none\n5=none\n"
    "[KWOUtil 0807]\n1=0807\n2=0807\n3=0807\n4=0807\n"
    "[KWOUtil 0407]\n1=0407\n2=0407\n3=0407\n"
    "[KWOUtil 0007]\n1=0007\n2=0007\n"
    "[KWOUtil 0C07]\n1=0C07\n"
    "[KWOUtil 040C]\n1=040C\n";

TEST(MessageFile, EachTextIsOfTheBestLanguageThatHasIt) {
    const Opened opened(kLanguages);
    const auto all = [&](std::uint16_t language) {
        Strings texts;
        for (std::int32_t number = 1; number <= 6; ++number)
            texts.push_back(opened.Text(language, number));
        return texts;
    };

    EXPECT_EQ(all(0x0C07), (Strings{"0C07", "0007", "0407", "0807", "none", "-"}));
    EXPECT_EQ(all(0x0807), (Strings{"0807", "0807", "0807", "0807", "none", "-"}));
    EXPECT_EQ(all(0x0407), (Strings{"0407", "0407", "0407", "0807", "none", "-"}));
    EXPECT_EQ(all(0x1007), (Strings{"0007", "0007", "0407", "0807", "none", "-"}));
    EXPECT_EQ(all(0x0C0C), (Strings{"040C", "none", "none", "none", "none", "-"}));
    EXPECT_EQ(all(0x0409), (Strings{"none", "none", "none", "none", "none", "-"}));
    EXPECT_EQ(all(0), (Strings{"none", "none", "none", "none", "none", "-"}));
}

TEST(MessageFile, ProgramsAreFoundInAnyLetterCaseOfEuropeanAlphabets) {
    for (const auto& [capital, small, section] : {std::tuple(u"\u010C", u"\u010D", "\xC4\x8D"),
                                                  {u"\u0141", u"\u0142", "\xC5\x82"},
                                                  {u"\u0160", u"\u0161", "\xC5\xA1"},
                                                  {u"\u0178", u"\u00FF", "\xC3\xBF"},
                                                  {u"\u017D", u"\u017E", "\xC5\xBE"},
                                                  {u"\u0386", u"\u03AC", "\xCE\xAC"},
                                                  {u"\u0389", u"\u03AE", "\xCE\xAE"},
                                                  {u"\u038C", u"\u03CC", "\xCF\x8C"},
                                                  {u"\u038F", u"\u03CE", "\xCF\x8E"},
                                                  {u"\u03AB", u"\u03CB", "\xCF\x8B"}}) {
        const Opened opened("[" + std::string(section) + "]\n1=a\n[KWOUtil]\n1=other\n");
        EXPECT_EQ(opened.Text(0, 1, capital), "a") << section;
        EXPECT_EQ(opened.Text(0, 1, small), "a") << section;
    }
    const Opened opened("[\xC5\x82]\n1=a\n[KWOUtil]\n1=other\n");
    EXPECT_EQ(opened.Text(0, 1, u"\u0143"), "other") << "the capital of the next letter";
}

TEST(MessageFile, OtherLanguagesAreTriedInTheOrderOfTheFile) {
    const Opened opened("[KWOUtil 0C07]\n1=a\n[KWOUtil 0807]\n1=b\n2=b\n");

    EXPECT_EQ(opened.Text(0x1407, 1), "a");
    EXPECT_EQ(opened.Text(0x1407, 2), "b");
}

TEST(MessageFile, WithoutASectionThatNamesNoLanguageAnotherLanguageServesNobody) {
    const Opened opened("[KWOUtil 0407]\n1=a\n");

    EXPECT_EQ(opened.Text(0x0807, 1), "a");
    EXPECT_EQ(opened.Text(0x0409, 1), "-");
}

TEST(MessageFile, AProgramWithoutSectionsIsServedKWOUtils) {
    const Opened opened("[KWOUtil]\n1=a\n2=b\n[Other 0407]\n1=o\n");

    EXPECT_EQ(opened.Text(0, 1, u"Unknown"), "a");
    EXPECT_EQ(opened.Text(0x407, 1, u"OTHER"), "o");
    EXPECT_EQ(opened.Text(0x407, 2, u"Other"), "-");
    EXPECT_EQ(opened.Text(0x409, 1, u"Other"), "-");
}

TEST(MessageFile, SectionsMayComeInParts) {
    const Opened opened("[KWOUtil]\n1=a\n[B]\n1=b\n[kwoutil]\n2=c\n");

    EXPECT_EQ(opened.Text(0, 2), "c");
    EXPECT_EQ(opened.file.ExtentOf(u"KWOUtil")->highest, 2);
}

TEST(MessageFile, TheExtentIsOverAllLanguagesOfTheProgramAlone) {
    const Opened opened("[KWOUtil]\n5=abc\n[KWOUtil 0407]\n3=de\\n\n9=f\n[Other]\n1=ghi\n");

    const auto extent = opened.file.ExtentOf(u"kwoutil");
    ASSERT_TRUE(extent);
    EXPECT_EQ(extent->lowest, 3);
    EXPECT_EQ(extent->highest, 9);
    EXPECT_EQ(extent->characters, 3 + 4 + 1);
}

TEST(MessageFile, WhereThereIsNothingThereIsNoExtent) {
    EXPECT_FALSE(Opened("").file.ExtentOf(u"KWOUtil"));
    EXPECT_FALSE(Opened("[Other]\n1=a\n").file.ExtentOf(u"KWOUtil"));
    EXPECT_FALSE(Opened("[Mine]\n[KWOUtil]\n[Other]\n1=a\n").file.ExtentOf(u"Mine"));
}

TEST(MessageFile, AProgramWhoseSectionsHoldNoTextIsServedKWOUtils) {
    const Opened opened("[Mine]\n[Mine 0407]\n1 = \n[KWOUtil]\n1=a\n[KWOUtil 0407]\n1=b\n");

    EXPECT_EQ(opened.Text(0x409, 1, u"Mine"), "a");
    EXPECT_EQ(opened.Text(0x407, 1, u"Mine"), "b");
    ASSERT_TRUE(opened.file.ExtentOf(u"Mine"));
    EXPECT_EQ(opened.file.ExtentOf(u"Mine")->characters, 2);
}

TEST(MessageFile, BadLinesAreReportedWithFileLineAndReasonAndTheRestIsRead) {
    const Opened opened(
        "1=early\n[KWOUtil]\nx\n1=a\n1=again\n0=x\n2=\\q\n[KWOUtil 04]\n3=lost\n[KWOUtil]\n4=\xFF\n5=\x01\n6=b\n");

    EXPECT_EQ(opened.problems.lines,
              (Strings{"x.nls(1): it stands in no section", "x.nls(3): there is no equals sign after a number",
                       "x.nls(5): its section has a text for this number already",
                       "x.nls(6): the number is not within 1 and 99999999",
                       "x.nls(7): after a backslash only n, another backslash or, at an end of the text, s may stand",
                       "x.nls(8): the language identifier is not of four hexadecimal digits",
                       "x.nls(9): it stands in no section", "x.nls(11): it is not well-formed UTF-8",
                       "x.nls(12): it holds control characters"}));
    EXPECT_EQ(opened.Text(0, 1), "a");
    EXPECT_EQ(opened.Text(0, 6), "b");
    EXPECT_EQ(opened.Text(0, 3), "-");
}

TEST(MessageFile, AHeaderThatIsDamagedEndsTheSectionBeforeItWhateverDamagedIt) {
    const std::string longRemark(70'000, 'x');
    for (const std::string& header : {
             std::string("[KWOUtil 040C]   fran\xE7"
                         "ais"),  // saved in an ANSI code page
             std::string("[Caf\xE9 040C]"),
             std::string("[KWOUtil\x01 040C]"),
             std::string("\x1A[KWOUtil 040C]"),
             "[KWOUtil 040C] " + longRemark,
             std::string("\xEF\xBB\xBF[KWOUtil 040C]"),  // another file was put behind the first
             std::string("\xC2\xA0[KWOUtil 040C]"),
             std::string("\xA0[KWOUtil 040C]"),
             std::string(" \t\xC2\xA0 [KWOUtil 040C]"),
             std::string("\xE2\x80\x8B[KWOUtil 040C]"),
             std::string("\xE3\x80\x80[KWOUtil 040C]"),
             std::string("\xEF\xBC\xBBKWOUtil 040C]"),  // a wide bracket
             std::string("[KWOUtil 040C"),
             std::string("KWOUtil 040C]"),
             std::string("x[KWOUtil 040C]"),
             std::string("[KWOUtil 40C]"),
         }) {
        const Opened opened("[KWOUtil 0407]\n1=deutsch\n" + header + "\n2=francais\n[KWOUtil]\n2=english\n");
        EXPECT_EQ(opened.Text(0x407, 1), "deutsch") << header.substr(0, 40);
        EXPECT_EQ(opened.Text(0x407, 2), "english") << header.substr(0, 40);
        ASSERT_EQ(opened.problems.lines.size(), 2u) << header.substr(0, 40);
        EXPECT_TRUE(opened.problems.lines[0].starts_with("x.nls(3): ")) << opened.problems.lines[0];
        EXPECT_EQ(opened.problems.lines[1], "x.nls(4): it stands in no section");
    }
}

TEST(MessageFile, ABadLineThatIsNoHeaderLeavesItsSection) {
    for (const char* const line :
         {"3 [x]", "3 = [\xFF]", "3 = \xE9", "\xE9", "; [caf\xE9]", "\xC2\xA0; [x]", "x", "x = [y]", "3 = a\x01[",
          "\xC2\xA0"
          "3 [x] = y"}) {
        const Opened opened(std::string("[KWOUtil]\n1=a\n") + line + "\n2=b\n");
        EXPECT_EQ(opened.Text(0, 2), "b") << line;
    }
}

TEST(MessageFile, ARefusedFileIsReportedBehindItsProblems) {
    const auto reported = [](const std::string& bytes) {
        RecordedProblems problems;
        EXPECT_THROW(MessageFile(bytes, u"x.nls", problems), platform::ComponentError);
        return problems.lines;
    };
    constexpr const char* kRefused = "The message file x.nls cannot be used: ";
    EXPECT_EQ(reported("1=a\n[KWOUtil]\nx\n" + std::string((1 << 20) + 1, ';')),
              (Strings{"x.nls(1): it stands in no section", "x.nls(3): there is no equals sign after a number",
                       std::string(kRefused) + "line 4 is longer than 1 MiB"}));
    EXPECT_EQ(reported("\xFF\xFE"), (Strings{std::string(kRefused) + "it is UTF-16 text, but must be UTF-8"}));

    std::string many;
    for (int line = 0; line < 105; ++line)
        many += "x\n";
    const Strings lines = reported(many + std::string((1 << 20) + 1, ';'));
    ASSERT_EQ(lines.size(), 102u);
    EXPECT_EQ(lines[100], "x.nls: lines with problems that are not listed: 5");
}

TEST(MessageFile, OfSeveralTextsForANumberTheFirstStays) {
    const Opened opened("[KWOUtil]\n2=z\n1=a\n1=b\n[KWOUtil]\n1=c\n2=y\n");

    EXPECT_EQ(opened.Text(0, 1), "a");
    EXPECT_EQ(opened.Text(0, 2), "z");
    EXPECT_EQ(opened.problems.lines.size(), 3u);
}

TEST(MessageFile, AfterAHundredProblemsTheOthersAreCounted) {
    std::string bytes;
    for (int i = 0; i < 105; ++i)
        bytes += "x\n";
    const Opened opened(bytes);

    ASSERT_EQ(opened.problems.lines.size(), 101u);
    EXPECT_EQ(opened.problems.lines[99], "x.nls(100): there is no equals sign after a number");
    EXPECT_EQ(opened.problems.lines[100], "x.nls: lines with problems that are not listed: 5");
}

TEST(MessageFile, AProgramsNumbersSpanNoMoreThanAMillion) {
    const Opened opened("[KWOUtil]\n500=a\n1000499=b\n[KWOUtil 0407]\n1000500=c\n499=d\n[Other]\n5000000=e\n");

    EXPECT_EQ(opened.Text(0x407, 1000499), "b");
    EXPECT_EQ(opened.Text(0x407, 1000500), "-");
    EXPECT_EQ(opened.Text(0x407, 499), "-");
    EXPECT_EQ(opened.Text(0x407, 5000000, u"Other"), "e");
    EXPECT_EQ(opened.problems.lines.size(), 2u);
}

TEST(MessageFile, ALineOfMoreThan65536CharactersIsSkipped) {
    const std::string longest = "1=" + std::string(65534, 'x');
    const Opened opened("[KWOUtil]\n" + longest + "\r\n2" + longest.substr(1) + "x\n3=" + std::string(2 * 40000, 'y') +
                        "\n4=a\n");

    EXPECT_EQ(opened.Text(0, 1).size(), 65534u);
    EXPECT_EQ(opened.Text(0, 2), "-");
    EXPECT_EQ(opened.Text(0, 3), "-");
    EXPECT_EQ(opened.Text(0, 4), "a");
    EXPECT_EQ(opened.problems.lines.size(), 2u);
}

TEST(MessageFile, ALineOfMoreThanAMebibyteRefusesTheFile) {
    EXPECT_EQ(Refusal(std::string(1 << 20, ';') + "\r\n"), 0u);
    EXPECT_EQ(Refusal(std::string((1 << 20) + 1, ';')), 0x7604u);
}

TEST(MessageFile, ZeroBytesAndUtf16RefuseTheFile) {
    EXPECT_EQ(Refusal(std::string("[KWOUtil]\n1=a\0b\n", 16)), 0x7603u);
    EXPECT_EQ(Refusal("\xFF\xFE[\0"), 0x7603u);
    EXPECT_EQ(Refusal("\xFE\xFF"), 0x7603u);
    EXPECT_EQ(Refusal(std::string("[\0K\0", 4)), 0x7603u);
    EXPECT_EQ(Refusal("\xFF"), 0u);
}

TEST(MessageFile, MoreThan64MebibytesRefuseTheFile) {
    std::string bytes(std::size_t{64} << 20, ';');
    for (std::size_t at = 0; at < bytes.size(); at += 1 << 20)
        bytes[at] = '\n';
    EXPECT_EQ(Refusal(bytes), 0u);
    bytes += '\n';
    EXPECT_EQ(Refusal(bytes), 0x7602u);
}

TEST(MessageFile, MoreThanTenThousandSectionsRefuseTheFile) {
    std::string bytes;
    for (int i = 0; i < 10'000; ++i)
        bytes += "[p" + std::to_string(i) + "]\n";
    EXPECT_EQ(Refusal(bytes + "[p5]\n"), 0u);
    EXPECT_EQ(Refusal(bytes + "[q]\n"), 0x7605u);
}

TEST(MessageFile, MoreThanAMillionTextsRefuseTheFile) {
    std::string bytes = "[a]\n";
    for (int i = 1; i <= 1'000'000; ++i)
        bytes += std::to_string(i) + "=x\n";
    EXPECT_EQ(Refusal(bytes), 0u);
    EXPECT_EQ(Refusal(bytes + "[b]\n1=x\n"), 0x7605u);
}

}  // namespace
}  // namespace kwo::kwoinit
