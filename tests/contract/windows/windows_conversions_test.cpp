#include "platform/windows/windows_conversions.h"

#include <windows.h>
#include <oleauto.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "platform/windows/variant_bridge.h"
#include "support/american_formats.h"
#include "support/raised.h"

namespace kwo::platform::windows {
namespace {

using com_support::OwnedVariant;
using test_support::kMismatch;
using test_support::Raised;

constexpr std::int32_t kOverflow = 6;

constexpr double kInfinity = std::numeric_limits<double>::infinity();
const double kNotANumber = std::nan("");

std::string Narrow(TextView text) {
    std::string narrow;
    for (const char16_t c : text)
        narrow += c < 0x80 ? static_cast<char>(c) : '?';
    return narrow;
}

Text SimulatedLocaleSource(LCTYPE what) {
    wchar_t buffer[80];
    const int length = ::GetLocaleInfoW(LOCALE_USER_DEFAULT, what, buffer, 80);
    return Text(buffer, buffer + (length > 0 ? length - 1 : 0));
}

/// Figures are written here with the marks of American English.
Text Localised(TextView text) {
    Text localised;
    for (const char16_t c : text) {
        if (c == u'.') {
            localised += SimulatedLocaleSource(LOCALE_SDECIMAL);
        } else if (c == u',') {
            localised += SimulatedLocaleSource(LOCALE_STHOUSAND);
        } else {
            localised += c;
        }
    }
    return localised;
}

Variant Outside(VARTYPE type, LONGLONG bits) {
    VARIANT value = {};
    value.vt = type;
    value.llVal = bits;
    return FromVariant(value);
}

class WindowsConversionsTest : public testing::Test {
protected:
    WindowsConversions conversions;
};

TEST_F(WindowsConversionsTest, HalvesGoToTheEvenNeighbour) {
    struct Row {
        double value;
        std::int16_t whole;
    };
    for (const Row& row :
         {Row{0.5, 0}, Row{1.5, 2}, Row{2.5, 2}, Row{3.5, 4}, Row{-0.5, 0}, Row{-1.5, -2}, Row{-2.5, -2},
          Row{0.49999999999999994, 0}, Row{0.50000001, 1}, Row{2.4999, 2}, Row{-2.5001, -3}}) {
        EXPECT_EQ(conversions.ToInt16(row.value), row.whole) << row.value;
        EXPECT_EQ(conversions.ToInt32(row.value), row.whole) << row.value;
        EXPECT_EQ(conversions.ToInt32(Date{row.value}), row.whole) << row.value;
    }
    for (const Row& row : {Row{0.5, 0}, Row{1.5, 2}, Row{2.5, 2}, Row{-1.5, -2}, Row{-2.5, -2}}) {
        const Currency currency{static_cast<std::int64_t>(row.value * Currency::kScale)};
        EXPECT_EQ(conversions.ToInt16(static_cast<float>(row.value)), row.whole) << row.value;
        EXPECT_EQ(conversions.ToInt16(currency), row.whole) << row.value;
        EXPECT_EQ(conversions.ToInt32(currency), row.whole) << row.value;
    }
    EXPECT_EQ(conversions.ToInt16(Localised(u"0.5")), 0);
    EXPECT_EQ(conversions.ToInt16(Localised(u"1.5")), 2);
    EXPECT_EQ(conversions.ToInt32(Localised(u"-2.5")), -2);
}

TEST_F(WindowsConversionsTest, SixteenBitsAndNotOneMore) {
    EXPECT_EQ(conversions.ToInt16(std::int32_t{32767}), 32767);
    EXPECT_EQ(conversions.ToInt16(std::int32_t{-32768}), -32768);
    EXPECT_EQ(conversions.ToInt16(32767.49), 32767);
    EXPECT_EQ(conversions.ToInt16(-32768.5), -32768);
    EXPECT_EQ(conversions.ToInt16(Text(u"-32768")), -32768);
    for (const Variant& value :
         {Variant(std::int32_t{32768}), Variant(std::int32_t{-32769}), Variant(32767.5), Variant(-32768.51),
          Variant(1e300), Variant(kInfinity), Variant(kNotANumber), Variant(std::nanf("")), Variant(Date{kNotANumber}),
          Variant(Currency::Whole(32768)), Variant(Date{32768}), Variant(Text(u"32768")), Variant(Text(u"1e400"))}) {
        EXPECT_EQ(Raised([&] { conversions.ToInt16(value); }).number, kOverflow) << value.index();
    }
}

TEST_F(WindowsConversionsTest, ThirtyTwoBitsAndNotOneMore) {
    EXPECT_EQ(conversions.ToInt32(2147483647.49), 2147483647);
    EXPECT_EQ(conversions.ToInt32(-2147483648.5), std::numeric_limits<std::int32_t>::min());
    EXPECT_EQ(conversions.ToInt32(Currency::Whole(2147483647)), 2147483647);
    EXPECT_EQ(conversions.ToInt32(Text(u"-2147483648")), std::numeric_limits<std::int32_t>::min());
    EXPECT_EQ(conversions.ToInt32(Outside(VT_UI4, 0x7FFFFFFF)), 2147483647);
    for (const Variant& value :
         {Variant(2147483647.5), Variant(-2147483648.51), Variant(-1e300), Variant(-kInfinity), Variant(kNotANumber),
          Variant(1e10f), Variant(Currency::Whole(2147483648)), Variant(Text(u"2147483648")),
          Outside(VT_UI4, 0x80000000), Outside(VT_UINT, 0xFFFFFFFF), Outside(VT_I8, 2147483648)}) {
        EXPECT_EQ(Raised([&] { conversions.ToInt32(value); }).number, kOverflow) << value.index();
    }
}

TEST_F(WindowsConversionsTest, ThirtyTwoBitsOfAnyType) {
    EXPECT_EQ(conversions.To32Bits(Outside(VT_UI4, 0xFFFFFFFF)), -1);
    EXPECT_EQ(conversions.To32Bits(Outside(VT_UINT, 0x80000000)), std::numeric_limits<std::int32_t>::min());
    EXPECT_EQ(conversions.To32Bits(Outside(VT_I8, 0xFFFFFFFF)), -1);
    EXPECT_EQ(conversions.To32Bits(Outside(VT_I8, -1)), -1);
    EXPECT_EQ(conversions.To32Bits(Outside(VT_UI8, -1)), -1) << "a handle as wide as a pointer";
    EXPECT_EQ(Raised([&] { conversions.To32Bits(Outside(VT_I8, 0x100000000)); }).number, kOverflow);
    EXPECT_EQ(Raised([&] { conversions.To32Bits(kNotANumber); }).number, kOverflow);
}

TEST_F(WindowsConversionsTest, SinglesAndDoubles) {
    EXPECT_EQ(conversions.ToSingle(0.1), 0.1f);
    EXPECT_EQ(conversions.ToSingle(3.4028234663852886e38), std::numeric_limits<float>::max());
    EXPECT_EQ(Raised([&] { conversions.ToSingle(3.5e38); }).number, kOverflow);
    EXPECT_EQ(Raised([&] { conversions.ToSingle(-3.5e38); }).number, kOverflow);
    EXPECT_EQ(conversions.ToDouble(Currency{-15000}), -1.5);
    EXPECT_EQ(conversions.ToDouble(Date{2.25}), 2.25);
    EXPECT_EQ(conversions.ToDouble(true), -1);
    EXPECT_EQ(conversions.ToDouble(std::uint8_t{255}), 255);
    EXPECT_EQ(conversions.ToDouble(Empty()), 0);
    EXPECT_EQ(conversions.ToDouble(Localised(u" 1,234.5 ")), 1234.5);
    EXPECT_EQ(Raised([&] { conversions.ToDouble(Text(u"1e400")); }).number, kOverflow);
}

TEST_F(WindowsConversionsTest, Booleans) {
    for (const Variant& value : {Variant(std::int16_t{2}), Variant(0.1), Variant(Text(u"True")), Variant(Text(u"TRUE")),
                                 Variant(Text(u"-1")), Variant(Currency{1}), Variant(Date{0.5})}) {
        EXPECT_TRUE(conversions.ToBoolean(value)) << value.index();
    }
    for (const Variant& value : {Variant(Empty()), Variant(0.0), Variant(-0.0), Variant(Text(u"False")),
                                 Variant(Text(u"0")), Variant(Currency{}), Variant(Date{})}) {
        EXPECT_FALSE(conversions.ToBoolean(value)) << value.index();
    }
    EXPECT_EQ(Raised([&] { conversions.ToBoolean(Text(u"maybe")); }).number, kMismatch);
    EXPECT_EQ(conversions.ToInt16(true), -1);
}

TEST_F(WindowsConversionsTest, WhatIsNoNumberIsAMismatch) {
    VARIANT bytes = {};
    bytes.vt = VT_ARRAY | VT_UI1;
    bytes.parray = ::SafeArrayCreateVector(VT_UI1, 0, 2);
    const OwnedVariant owner = OwnedVariant::Adopt(bytes);
    for (const Variant& value : {Variant(Missing()), Variant(Null()), Variant(ErrorValue{5}), Variant(HostObjectRef()),
                                 Variant(Text()), Variant(Text(u" ")), Variant(Text(u"abc")), Variant(Text(u"1 x")),
                                 Variant(Text(u"12\0", 3)), FromVariant(bytes)}) {
        EXPECT_EQ(Raised([&] { conversions.ToInt16(value); }).number, kMismatch) << value.index();
        EXPECT_EQ(Raised([&] { conversions.ToInt32(value); }).number, kMismatch) << value.index();
        EXPECT_EQ(Raised([&] { conversions.ToSingle(value); }).number, kMismatch) << value.index();
        EXPECT_EQ(Raised([&] { conversions.ToDouble(value); }).number, kMismatch) << value.index();
        EXPECT_EQ(Raised([&] { conversions.ToBoolean(value); }).number, kMismatch) << value.index();
        EXPECT_EQ(Raised([&] { conversions.ToDate(value); }).number, kMismatch) << value.index();
        if (!std::holds_alternative<Text>(value)) {
            EXPECT_EQ(Raised([&] { conversions.ToText(value); }).number, kMismatch) << value.index();
        }
    }
}

TEST_F(WindowsConversionsTest, Texts) {
    struct Row {
        Variant value;
        const char16_t* text;
    };
    for (const Row& row :
         {Row{Empty(), u""}, Row{std::int16_t{-32768}, u"-32768"}, Row{std::int32_t{2147483647}, u"2147483647"},
          Row{std::uint8_t{255}, u"255"}, Row{1.5f, u"1.5"}, Row{0.1f, u"0.1"}, Row{-1234.5678, u"-1234.5678"},
          Row{1.0 / 3, u"0.333333333333333"}, Row{123456789012345.0, u"123456789012345"}, Row{1e15, u"1E+15"},
          Row{-0.0, u"0"}, Row{Currency{-1}, u"-0.0001"},
          Row{Currency{std::numeric_limits<std::int64_t>::min()}, u"-922337203685477.5808"}, Row{true, u"True"},
          Row{false, u"False"}}) {
        EXPECT_EQ(conversions.ToText(row.value), Localised(row.text)) << Narrow(row.text);
    }
    const Text text(u" as\0it is ", 10);
    EXPECT_EQ(conversions.ToText(text), text);
    EXPECT_EQ(Raised([&] { conversions.ToText(Date{1e9}); }).number, kMismatch);
}

TEST_F(WindowsConversionsTest, DatesStayWithinTheCalendar) {
    EXPECT_EQ(conversions.ToDate(2958465.75).days, 2958465.75);
    EXPECT_EQ(conversions.ToDate(-657434.75).days, -657434.75);
    EXPECT_EQ(conversions.ToDate(Date{1.25}).days, 1.25);
    for (const double days : {2958466.0, -657435.0, 1e300, kInfinity, kNotANumber}) {
        EXPECT_EQ(Raised([&] { conversions.ToDate(days); }).number, kOverflow) << days;
        EXPECT_EQ(Raised([&] { conversions.ToDate(Date{days}); }).number, kOverflow) << days;
        EXPECT_EQ(Raised([&] { conversions.FormatDate(Date{days}, u"h:nn:ss"); }).number, kOverflow) << days;
    }
}

TEST_F(WindowsConversionsTest, TextsAreDatesInTheUsersLocale) {
    struct Row {
        const char16_t* text;
        double days;
    };
    for (const Row& row : {Row{u"2026-11-16", 46342}, Row{u"6:00", 0.25}, Row{u"23:59:59", 86399 / 86400.0},
                           Row{u"2026-11-16 18:00", 46342.75}}) {
        const auto date = conversions.ParseDate(row.text);
        ASSERT_TRUE(date) << Narrow(row.text);
        EXPECT_DOUBLE_EQ(date->days, row.days) << Narrow(row.text);
        EXPECT_DOUBLE_EQ(conversions.ToDate(Text(row.text)).days, row.days) << Narrow(row.text);
    }
    // What the locale writes, it reads.
    const Date date{46342.75};
    EXPECT_EQ(conversions.ParseDate(conversions.ToText(date)), date);
    EXPECT_EQ(conversions.ParseDate(conversions.FormatDate(date, u"Short Date")), Date{46342});
}

TEST_F(WindowsConversionsTest, TextsThatAreNoDates) {
    for (const TextView text :
         {TextView(), TextView(u"0"), TextView(u"12"), TextView(u"abc"), TextView(u"2026-02-30"),
          TextView(u"2023-02-29"), TextView(u"24:00"), TextView(u"6:60"), TextView(u"2026-11-16\0", 11)}) {
        EXPECT_FALSE(conversions.ParseDate(text)) << Narrow(text);
        EXPECT_EQ(Raised([&] { conversions.ToDate(Text(text)); }).number, kMismatch) << Narrow(text);
    }
}

TEST_F(WindowsConversionsTest, TimesByPattern) {
    const Text separator = SimulatedLocaleSource(LOCALE_STIME);
    struct Row {
        double days;
        const char16_t* hour;
        const char16_t* twoDigitHour;
        const char16_t* minute;
        const char16_t* second;
    };
    constexpr double kSecond = 1 / 86400.0;
    for (const Row& row :
         {Row{46084 + (14 * 3600 + 5 * 60 + 9) * kSecond, u"14", u"14", u"05", u"09"},
          Row{0, u"0", u"00", u"00", u"00"}, Row{0.0625, u"1", u"01", u"30", u"00"},
          Row{59 * kSecond, u"0", u"00", u"00", u"59"}, Row{60 * kSecond, u"0", u"00", u"01", u"00"},
          Row{3599 * kSecond, u"0", u"00", u"59", u"59"}, Row{3600 * kSecond, u"1", u"01", u"00", u"00"},
          Row{86399 * kSecond, u"23", u"23", u"59", u"59"}, Row{0.4 * kSecond, u"0", u"00", u"00", u"00"},
          Row{0.6 * kSecond, u"0", u"00", u"00", u"01"}, Row{1 - 0.4 * kSecond, u"0", u"00", u"00", u"00"},
          Row{-1.25, u"6", u"06", u"00", u"00"}}) {
        const Text rest = separator + row.minute + separator + row.second;
        EXPECT_EQ(conversions.FormatDate({row.days}, u"h:nn:ss"), row.hour + rest) << row.days;
        EXPECT_EQ(conversions.FormatDate({row.days}, u"hh:nn:ss"), row.twoDigitHour + rest) << row.days;
        EXPECT_EQ(conversions.FormatDate({row.days}, u":hh:nn:ss"), separator + row.twoDigitHour + rest) << row.days;
    }
}

TEST_F(WindowsConversionsTest, DatesByPattern) {
    const Date march{46084.586909722224};  // Tuesday, 2026-03-03
    EXPECT_EQ(conversions.FormatDate(march, u"Mmmm, yyyy"), SimulatedLocaleSource(LOCALE_SMONTHNAME3) + u", 2026");
    EXPECT_EQ(conversions.FormatDate({0}, u"Mmmm, yyyy"), SimulatedLocaleSource(LOCALE_SMONTHNAME12) + u", 1899");

    const SYSTEMTIME day = {2026, 3, 2, 3, 0, 0, 0, 0};
    wchar_t expected[80];
    ASSERT_GT(::GetDateFormatW(LOCALE_USER_DEFAULT, DATE_SHORTDATE, &day, nullptr, expected, 80), 0);
    const Text shortDate = conversions.FormatDate(march, u"Short Date");
    EXPECT_EQ(std::wstring(shortDate.begin(), shortDate.end()), expected);
}

TEST_F(WindowsConversionsTest, AnsiBytesSurviveTheWayThereAndBack) {
    std::string bytes;
    for (int byte = 0; byte < 256; ++byte)
        bytes += static_cast<char>(byte);
    // In a code page with lead bytes not every sequence is a text.
    CPINFO page = {};
    ASSERT_TRUE(::GetCPInfo(CP_ACP, &page));
    if (page.MaxCharSize > 1) bytes.resize(0x80);

    const Text text = conversions.FromAnsi(bytes);

    EXPECT_EQ(text.size(), bytes.size());
    EXPECT_EQ(text[0], u'\0');
    EXPECT_EQ(conversions.ToAnsi(text), bytes);
    EXPECT_EQ(conversions.FromAnsi({}), u"");
    EXPECT_EQ(conversions.ToAnsi({}), "");
    EXPECT_EQ(conversions.FromAnsi(std::string_view("a\0b\0", 4)), Text(u"a\0b\0", 4));
    EXPECT_EQ(conversions.ToAnsi(TextView(u"a\0b\0", 4)), std::string("a\0b\0", 4));
}

TEST_F(WindowsConversionsTest, AQuestionMarkStandsForWhatTheCodePageLacks) {
    if (::GetACP() != 1252) GTEST_SKIP() << "another code page has other characters";
    EXPECT_EQ(conversions.ToAnsi(u"a漢b"), "a?b");
    EXPECT_EQ(conversions.ToAnsi(u"\U0001F600"), "??");
    EXPECT_EQ(conversions.ToAnsi(u"€ä"), "\x80\xE4");
}

TEST(AmericanFormats, AreThoseOfWineHere) {
    if (GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "wine_get_version") == nullptr)
        GTEST_SKIP() << "the user of Windows has the formats that he likes";
    EXPECT_TRUE(test_support::HasAmericanFormats()) << "else tests that need them are skipped everywhere";
}

}  // namespace
}  // namespace kwo::platform::windows
