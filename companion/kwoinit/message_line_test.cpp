#include "kwoinit/message_line.h"

#include <gtest/gtest.h>

#include <string>

namespace kwo::kwoinit {
namespace {

std::string Narrow(TextView text) {
    std::string narrow;
    for (const char16_t c : text)
        narrow += c == u'\r' ? "<CR>" : c == u'\n' ? "<LF>" : std::string(1, static_cast<char>(c));
    return narrow;
}

/// "section name 0407", "text 7 |...|", "bad" or "nothing".
std::string Read(TextView line) {
    const Line read = ParseLine(line);
    if (const auto* const section = std::get_if<SectionLine>(&read)) {
        char language[8];
        std::snprintf(language, sizeof language, "%04X", section->language);
        return "section |" + Narrow(section->program) + "| " + language;
    }
    if (const auto* const text = std::get_if<TextLine>(&read)) {
        return "text " + std::to_string(text->number) + " |" + Narrow(text->text) + "|";
    }
    if (std::holds_alternative<BadLine>(read)) return "bad";
    return "nothing";
}

TEST(MessageLine, EmptyLinesAndCommentsAreNothing) {
    for (const TextView line : {u"", u"  \t ", u"; 1900 = x", u"  ;[a]"})
        EXPECT_EQ(Read(line), "nothing") << Narrow(line);
}

TEST(MessageLine, HeadersNameAProgramAndPerhapsALanguage) {
    EXPECT_EQ(Read(u"[KWOUtil]"), "section |KWOUtil| 0000");
    EXPECT_EQ(Read(u" [ KWOUtil \t 0407 ]   German"), "section |KWOUtil| 0407");
    EXPECT_EQ(Read(u"[KWOUtil 0c0A]"), "section |KWOUtil| 0C0A");
    EXPECT_EQ(Read(u"[KWOUtil 0001]"), "section |KWOUtil| 0001");
    EXPECT_EQ(Read(u"[My Program]"), "section |My Program| 0000");
    EXPECT_EQ(Read(u"[My Cafe 0407]"), "section |My Cafe| 0407");
    EXPECT_EQ(Read(u"[0407]"), "section |0407| 0000");
}

TEST(MessageLine, QuotedNamesMayEndLikeALanguageAndHoldBrackets) {
    EXPECT_EQ(Read(u"[\"Office 2003\"]"), "section |Office 2003| 0000");
    EXPECT_EQ(Read(u"[ \"Office 2003\" 0407]"), "section |Office 2003| 0407");
    EXPECT_EQ(Read(u"[\"a]b\" F407]"), "section |a]b| F407");
}

TEST(MessageLine, HeadersThatAreNotUnderstoodAreBad) {
    for (const TextView line : {u"[", u"[]", u"[  ]", u"[KWOUtil", u"[KWOUtil 407]", u"[KWOUtil 00407]",
                                u"[KWOUtil 04G7]", u"[KWOUtil 0000]", u"[\"KWOUtil]", u"[\"\"]", u"[\"a\" b]"})
        EXPECT_EQ(Read(line), "bad") << Narrow(line);
}

TEST(MessageLine, TextsHaveANumberAndNoBlanksAround) {
    EXPECT_EQ(Read(u"1900 = A text; with = signs."), "text 1900 |A text; with = signs.|");
    EXPECT_EQ(Read(u"\t 007=x \t"), "text 7 |x|");
    EXPECT_EQ(Read(u"7 = a\tb"), "text 7 |a\tb|");
}

TEST(MessageLine, NumbersReachFromOneToEightNines) {
    EXPECT_EQ(Read(u"1=x"), "text 1 |x|");
    EXPECT_EQ(Read(u"99999999=x"), "text 99999999 |x|");
    for (const TextView line : {u"0=x", u"100000000=x", u"99999999999999999999999999=x"})
        EXPECT_EQ(Read(line), "bad") << Narrow(line);
}

TEST(MessageLine, WhatHasNoNumberOrNoTextIsBad) {
    for (const TextView line :
         {u"x", u"=x", u"-1=x", u"+1=x", u"1 0=x", u"1.5=x", u"0x10=x", u"1900", u"1900 =", u"1900 =  \t"})
        EXPECT_EQ(Read(line), "bad") << Narrow(line);
}

TEST(MessageLine, EscapesAreReplaced) {
    EXPECT_EQ(Read(u"1=a\\nb"), "text 1 |a<CR><LF>b|");
    EXPECT_EQ(Read(u"1=\\n"), "text 1 |<CR><LF>|");
    EXPECT_EQ(Read(u"1=C:\\\\new"), "text 1 |C:\\new|");
}

TEST(MessageLine, BlanksAtTheEndsAreWrittenAsEscapes) {
    EXPECT_EQ(Read(u"1 = \\sa\\s "), "text 1 | a |");
    EXPECT_EQ(Read(u"1=\\s\\sa\\s\\s"), "text 1 |  a  |");
    EXPECT_EQ(Read(u"1=\\s"), "text 1 | |");
    EXPECT_EQ(Read(u"1=\\s\\s\\s"), "text 1 |   |");
    EXPECT_EQ(Read(u"1=\\s\\n\\s"), "text 1 | <CR><LF> |");
}

TEST(MessageLine, ABackslashBeforeALastSIsNoBlank) {
    EXPECT_EQ(Read(u"1=a\\\\s"), "text 1 |a\\s|");
    EXPECT_EQ(Read(u"1=a\\\\\\s"), "text 1 |a\\ |");
    EXPECT_EQ(Read(u"1=\\\\s"), "text 1 |\\s|");
}

TEST(MessageLine, UnknownEscapesAreBad) {
    for (const TextView line : {u"1=a\\sb", u"1=a\\", u"1=\\", u"1=\\t", u"1=\\N", u"1=a\\\\\\"})
        EXPECT_EQ(Read(line), "bad") << Narrow(line);
}

}  // namespace
}  // namespace kwo::kwoinit
