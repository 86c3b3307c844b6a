#include "platform/simulated/simulated_conversions.h"

#include <gtest/gtest.h>

#include <stdexcept>

#include "platform/simulated/calendar.h"
#include "platform/simulated/english_dates.h"
#include "platform/simulated/english_numbers.h"
#include "platform/simulated/simulated_desktop.h"
#include "platform/simulated/text_codec.h"
#include "support/raised.h"

namespace kwo::platform::simulated {
namespace {

using test_support::RaisedNumber;

constexpr std::int32_t kOverflow = 6;
constexpr std::int32_t kMismatch = 13;

class EnglishConversionsTest : public testing::Test {
protected:
    SimulatedDesktop desktop;
    SimulatedConversions& conversions = desktop.conversions;
};

TEST_F(EnglishConversionsTest, WholeNumbersRoundHalvesToEven) {
    struct Row {
        double value;
        std::int32_t whole;
    };
    for (const Row& row : {Row{0.5, 0}, Row{1.5, 2}, Row{2.5, 2}, Row{-0.5, 0}, Row{-1.5, -2}, Row{-2.5, -2},
                           Row{2.4999, 2}, Row{2.5001, 3}, Row{-2.5001, -3}}) {
        EXPECT_EQ(conversions.ToInt16(row.value), row.whole) << row.value;
        EXPECT_EQ(conversions.ToInt32(row.value), row.whole) << row.value;
    }
}

TEST_F(EnglishConversionsTest, WholeNumbersOverflowAtTheirBounds) {
    EXPECT_EQ(conversions.ToInt16(32767.4999), 32767);
    EXPECT_EQ(conversions.ToInt16(-32768.5), -32768);
    EXPECT_EQ(conversions.ToInt32(2147483647.25), 2147483647);
    EXPECT_EQ(conversions.ToInt32(-2147483648.5), INT32_MIN);
    EXPECT_EQ(RaisedNumber([&] { conversions.ToInt16(32767.5); }), kOverflow);
    EXPECT_EQ(RaisedNumber([&] { conversions.ToInt16(-32768.51); }), kOverflow);
    EXPECT_EQ(RaisedNumber([&] { conversions.ToInt16(std::int32_t{32768}); }), kOverflow);
    EXPECT_EQ(RaisedNumber([&] { conversions.ToInt32(2147483647.5); }), kOverflow);
    EXPECT_EQ(RaisedNumber([&] { conversions.ToInt32(-2147483648.75); }), kOverflow);
}

TEST_F(EnglishConversionsTest, FloatingNumbersOverflowAtTheirBounds) {
    EXPECT_EQ(conversions.ToSingle(3.4e38), 3.4e38f);
    EXPECT_EQ(RaisedNumber([&] { conversions.ToSingle(3.5e38); }), kOverflow);
    EXPECT_EQ(RaisedNumber([&] { conversions.ToDouble(Text(u"1e309")); }), kOverflow);
    EXPECT_EQ(conversions.ToDouble(Text(u"1e-400")), 0);
    EXPECT_EQ(RaisedNumber([&] { conversions.ToDouble(Text(400, u'9')); }), kOverflow);
}

TEST_F(EnglishConversionsTest, KindsWithoutAValueMismatch) {
    const Variant kinds[] = {Missing{}, Null{}, ErrorValue{5}, HostObjectRef{}, ForeignRef{}, Text(u"abc"), Text()};
    for (const Variant& kind : kinds) {
        EXPECT_EQ(RaisedNumber([&] { conversions.ToInt16(kind); }), kMismatch) << Shown(kind);
        EXPECT_EQ(RaisedNumber([&] { conversions.ToInt32(kind); }), kMismatch) << Shown(kind);
        EXPECT_EQ(RaisedNumber([&] { conversions.ToSingle(kind); }), kMismatch) << Shown(kind);
        EXPECT_EQ(RaisedNumber([&] { conversions.ToDouble(kind); }), kMismatch) << Shown(kind);
        EXPECT_EQ(RaisedNumber([&] { conversions.ToBoolean(kind); }), kMismatch) << Shown(kind);
        EXPECT_EQ(RaisedNumber([&] { conversions.ToDate(kind); }), kMismatch) << Shown(kind);
    }
    EXPECT_EQ(RaisedNumber([&] { conversions.ToText(Null{}); }), kMismatch);
    EXPECT_EQ(RaisedNumber([&] { conversions.ToText(Missing{}); }), kMismatch);
    EXPECT_EQ(RaisedNumber([&] { conversions.ToText(ErrorValue{5}); }), kMismatch);
    EXPECT_EQ(RaisedNumber([&] { conversions.ToText(ForeignRef{}); }), kMismatch);
}

TEST_F(EnglishConversionsTest, EveryKindOfNumberConverts) {
    const Variant kinds[] = {std::int16_t{1}, std::int32_t{1}, 1.0f,      1.0, Currency::Whole(1),
                             Date{1.0},       std::uint8_t{1}, Text(u"1")};
    for (const Variant& kind : kinds) {
        EXPECT_EQ(conversions.ToInt16(kind), 1) << Shown(kind);
        EXPECT_EQ(conversions.ToInt32(kind), 1) << Shown(kind);
        EXPECT_EQ(conversions.ToDouble(kind), 1.0) << Shown(kind);
        EXPECT_TRUE(conversions.ToBoolean(kind)) << Shown(kind);
    }
    EXPECT_EQ(conversions.ToInt32(Empty{}), 0);
    EXPECT_EQ(conversions.ToInt16(true), -1);
    EXPECT_EQ(conversions.ToInt16(false), 0);
    EXPECT_FALSE(conversions.ToBoolean(0.0));
    EXPECT_TRUE(conversions.ToBoolean(0.1));
    EXPECT_TRUE(conversions.ToBoolean(Text(u"tRue")));
    EXPECT_FALSE(conversions.ToBoolean(Text(u"False")));
    EXPECT_TRUE(conversions.ToBoolean(Text(u"#TRUE#")));
    EXPECT_FALSE(conversions.ToBoolean(Text(u"#FALSE#")));
}

TEST_F(EnglishConversionsTest, TextsThatAreNumbers) {
    struct Row {
        const char16_t* text;
        double value;
    };
    for (const Row& row : {Row{u" 12 ", 12},  Row{u"-12", -12},   Row{u"+12", 12},    Row{u"12-", -12},
                           Row{u"- 12", -12}, Row{u"(12)", -12},  Row{u"$12", 12},    Row{u"1,234,567.5", 1234567.5},
                           Row{u".5", .5},    Row{u"5.", 5},      Row{u"1e3", 1000},  Row{u"1E-2", .01},
                           Row{u"2d2", 200},  Row{u"&HFF", 255},  Row{u"&hff", 255},  Row{u"&O17", 15},
                           Row{u"&o17", 15},  Row{u"\t7\r\n", 7}, Row{u"1e+3", 1000}, Row{u"( 12 )", -12}}) {
        EXPECT_EQ(conversions.ToDouble(Text(row.text)), row.value) << ToUtf8(row.text);
    }
}

TEST_F(EnglishConversionsTest, TextsThatAreNoNumbers) {
    for (const char16_t* text :
         {u"",    u" ",     u"-",    u".",    u"e3",   u"1e",   u"1e+",  u"1 2",   u"1.2.3", u"&H",
          u"&HG", u"&O8",   u"&X1",  u"(12",  u"12)",  u"--1",  u"-1-",  u"1.5,5", u",5",    u"12abc",
          u"$$1", u"((1))", u"-(1)", u"(-1)", u"(1-)", u"(1))", u"1e5x", u"&Hg",   u"1e-x"}) {
        EXPECT_EQ(RaisedNumber([&] { conversions.ToDouble(Text(text)); }), kMismatch) << ToUtf8(text);
    }
}

TEST_F(EnglishConversionsTest, PatternOfBitsThatFillsTheIntegerSetsItsSign) {
    EXPECT_EQ(conversions.ToInt16(Text(u"&H7FFF")), 32767);
    EXPECT_EQ(conversions.ToInt16(Text(u"&H8000")), -32768);
    EXPECT_EQ(conversions.ToInt16(Text(u"&HFFFF")), -1);
    EXPECT_EQ(RaisedNumber([&] { conversions.ToInt16(Text(u"&H10000")); }), kOverflow);
    EXPECT_EQ(conversions.ToInt32(Text(u"&HFFFF")), 65535);
    EXPECT_EQ(conversions.ToInt32(Text(u"&HFFFFFFFF")), -1);
    EXPECT_EQ(RaisedNumber([&] { conversions.ToInt32(Text(u"&H100000000")); }), kOverflow);
    EXPECT_EQ(RaisedNumber([&] { conversions.ToDouble(Text(u"&H10000000000000000")); }), kOverflow);
}

TEST_F(EnglishConversionsTest, ValuesHaveATextForm) {
    struct Row {
        Variant value;
        Text text;
    };
    const Row rows[] = {{Empty{}, u""},
                        {std::int16_t{-5}, u"-5"},
                        {std::int32_t{65536}, u"65536"},
                        {std::uint8_t{200}, u"200"},
                        {1.5f, u"1.5"},
                        {0.1f, u"0.1"},
                        {0.1, u"0.1"},
                        {1.0 / 3, u"0.333333333333333"},
                        {123456789012345.0, u"123456789012345"},
                        {1e15, u"1E+15"},
                        {-0.0, u"0"},
                        {Currency{15000}, u"1.5"},
                        {Currency{-1}, u"-0.0001"},
                        {Currency::Whole(7), u"7"},
                        {Currency{INT64_MIN}, u"-922337203685477.5808"},
                        {true, u"True"},
                        {false, u"False"},
                        {Text(u"as is "), u"as is "},
                        {Date{0}, u"12:00:00 AM"},
                        {Date{0.5}, u"12:00:00 PM"},
                        {Date{1}, u"12/31/1899"},
                        {Date{46342.75}, u"11/16/2026 6:00:00 PM"},
                        {Date{-1.25}, u"12/29/1899 6:00:00 AM"}};
    for (const Row& row : rows)
        EXPECT_EQ(conversions.ToText(row.value), row.text) << Shown(row.value);
}

TEST_F(EnglishConversionsTest, DatesOfNumbersStayWithinTheCalendar) {
    EXPECT_EQ(conversions.ToDate(std::int32_t{2958465}).days, 2958465);
    EXPECT_EQ(conversions.ToDate(-657434.0).days, -657434);
    EXPECT_EQ(RaisedNumber([&] { conversions.ToDate(2958466.0); }), kOverflow);
    EXPECT_EQ(RaisedNumber([&] { conversions.ToDate(-657435.0); }), kOverflow);
    EXPECT_EQ(RaisedNumber([&] { conversions.ToText(Date{1e9}); }), kMismatch);
    EXPECT_EQ(RaisedNumber([&] { conversions.FormatDate({1e9}, u"d"); }), kOverflow);
}

TEST_F(EnglishConversionsTest, TextsThatAreDates) {
    struct Row {
        const char16_t* text;
        double days;
    };
    for (const Row& row : {Row{u"12/30/1899", 0},
                           Row{u"1/1/1900", 2},
                           Row{u"11/16/2026", 46342},
                           Row{u"11-16-2026", 46342},
                           Row{u"2026-11-16", 46342},
                           Row{u"2026/11/16", 46342},
                           Row{u"16/11/2026", 46342},
                           Row{u"11/16/26", 46342},
                           Row{u"1/1/29", 47119},
                           Row{u"1/1/30", 10959},
                           Row{u"2/29/2024", 45351},
                           Row{u"6:00", 0.25},
                           Row{u"6:00:00", 0.25},
                           Row{u"6:00:00 PM", 0.75},
                           Row{u"6:00pm", 0.75},
                           Row{u"6 AM", 0.25},
                           Row{u"12 AM", 0},
                           Row{u"12:00 PM", 0.5},
                           Row{u"23:59:59", 86399 / 86400.0},
                           Row{u" 11/16/2026  18:00 ", 46342.75},
                           Row{u"12/29/1899 6:00", -1.25}}) {
        const auto date = conversions.ParseDate(row.text);
        ASSERT_TRUE(date) << ToUtf8(row.text);
        EXPECT_DOUBLE_EQ(date->days, row.days) << ToUtf8(row.text);
        EXPECT_DOUBLE_EQ(conversions.ToDate(Text(row.text)).days, row.days) << ToUtf8(row.text);
    }
}

TEST_F(EnglishConversionsTest, TextsThatAreNoDates) {
    for (const char16_t* text : {u"",           u"0",          u"12",
                                 u"abc",        u"2/30/2026",  u"2/29/2023",
                                 u"13/13/2026", u"0/1/2026",   u"1/2/3/4",
                                 u"24:00",      u"6:60",       u"6:00:60",
                                 u"13:00 PM",   u"1/1/2026 x", u"1/1/2026 PM",
                                 u"AM",         u":30",        u"6:",
                                 u"1//2026",    u"1/1/10000",  u"1/1/2026 6:00 7:00",
                                 u"1/200/2026", u"1:2:3:4"}) {
        EXPECT_FALSE(conversions.ParseDate(text)) << ToUtf8(text);
        EXPECT_EQ(RaisedNumber([&] { conversions.ToDate(Text(text)); }), kMismatch) << ToUtf8(text);
    }
}

TEST_F(EnglishConversionsTest, NumbersByPatternsThatNobodyUses) {
    struct Row {
        double value;
        const char16_t* pattern;
        const char16_t* text;
    };
    for (const Row& row :
         {Row{0.5, u"#.##", u".5"}, Row{5, u"#", u"5"}, Row{0, u"#", u""}, Row{1.5, u"0.0#", u"1.5"},
          Row{7, u"none", u"none"}, Row{7, u"0#", u"07"}, Row{7.25, u"0.#,#", u"7.25"}, Row{7, u"#0", u"7"}}) {
        EXPECT_EQ(conversions.FormatNumber(row.value, row.pattern), row.text) << row.value << ToUtf8(row.pattern);
    }
}

TEST_F(EnglishConversionsTest, DatesByPattern) {
    struct Row {
        double days;
        const char16_t* pattern;
        const char16_t* text;
    };
    const double afternoon = 46084 + (14 * 3600 + 5 * 60 + 9) / 86400.0;  // Tuesday, 2026-03-03
    for (const Row& row :
         {Row{afternoon, u"h:nn:ss", u"14:05:09"}, Row{afternoon, u"hh:nn:ss", u"14:05:09"},
          Row{afternoon, u":hh:nn:ss", u":14:05:09"}, Row{0.0625, u"h:n:s", u"1:30:0"}, Row{0.0625, u"hh:nn", u"01:30"},
          Row{afternoon, u"Mmmm, yyyy", u"March, 2026"}, Row{afternoon, u"mmm yy", u"Mar 26"},
          Row{afternoon, u"Short Date", u"3/3/2026"}, Row{afternoon, u"Long Date", u"Tuesday, March 3, 2026"},
          Row{afternoon, u"mm/dd/yyyy", u"03/03/2026"}, Row{afternoon, u"dddd ddd d", u"Tuesday Tue 3"},
          Row{afternoon, u"h:mm AM/PM", u"2:05 PM"}, Row{0, u"h:nn am/pm", u"12:00 AM"},
          Row{1 - 0.4 / 86400, u"hh:nn:ss", u"00:00:00"}, Row{0.4 / 86400, u"h:nn:ss", u"0:00:00"},
          Row{0.6 / 86400, u"h:nn:ss", u"0:00:01"}, Row{1.25, u"h", u"6"}}) {
        EXPECT_EQ(conversions.FormatDate({row.days}, row.pattern), row.text) << ToUtf8(row.pattern);
    }
    EXPECT_EQ(conversions.FormatDate({1.5}, u"[d]"), u"[31]");
    EXPECT_EQ(conversions.FormatDate({1.5}, u"d{|}~d"), u"31{|}~31");
    for (const char16_t* pattern : {u"q", u"ddddd", u"mmmmm", u"yyy", u"yyyyy", u"hhh", u"nnn", u"sss"}) {
        EXPECT_THROW(conversions.FormatDate({1}, pattern), std::invalid_argument) << ToUtf8(pattern);
    }
}

TEST_F(EnglishConversionsTest, DayNumbersAndMomentsAgreeOverTheWholeCalendar) {
    for (double day = kFirstDay; day <= kLastDay; day += 37) {
        const Moment moment = MomentOf({day});
        EXPECT_EQ(DayNumber(moment.year, moment.month, moment.day), day);
    }
    EXPECT_EQ(MomentOf({2}).weekday, 1u);
    EXPECT_EQ(DayNumber(99, 1, 1), std::nullopt);
    EXPECT_EQ(DayNumber(9999, 12, 31), kLastDay);
    EXPECT_EQ(DayNumber(10000, 1, 1), std::nullopt);
}

TEST_F(EnglishConversionsTest, AQuestionMarkStandsForWhatTheCodePageLacks) {
    EXPECT_EQ(conversions.ToAnsi(u"漢\U0001F600\u0080"), "????");
}

TEST_F(EnglishConversionsTest, LatinGreekAndCyrillicLettersHaveCapitals) {
    constexpr TextView kSmall = u"azàöøþÿαρσωая";
    constexpr TextView kCapital = u"AZÀÖØÞŸΑΡΣΩАЯ";
    for (std::size_t at = 0; at < kSmall.size(); ++at)
        EXPECT_EQ(conversions.ToUpper(kSmall[at]), kCapital[at]) << at;
    for (const char16_t same : {u'A', u'`', u'{', u'ß', u'÷', u'1'})
        EXPECT_EQ(conversions.ToUpper(same), same);
}

TEST_F(EnglishConversionsTest, Utf8SurvivesTheWayThereAndBack) {
    const std::string bytes = "aä€😀\n";
    EXPECT_EQ(FromUtf8(bytes), u"aä€\U0001F600\n");
    EXPECT_EQ(ToUtf8(FromUtf8(bytes)), bytes);
    EXPECT_EQ(Shown(TextView(u"a\r\n\x01\0b", 6)), "a\\r\\n\\x01\\0b");
}

TEST_F(EnglishConversionsTest, ByteOfNoUtf8CharacterIsReplacedAndSwallowsNothing) {
    EXPECT_EQ(FromUtf8("d\xFF\xB6"
                       "d"),
              u"d\uFFFD\uFFFDd");
    EXPECT_EQ(FromUtf8("\xE2\x82 \xC3"), u"\uFFFD\uFFFD \uFFFD");
}

}  // namespace
}  // namespace kwo::platform::simulated
