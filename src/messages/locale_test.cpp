#include "messages/locale.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "component/component.h"
#include "platform/component_error.h"
#include "platform/simulated/simulated_desktop.h"
#include "support/raised.h"

namespace kwo::messages {
namespace {

using platform::ComponentError;
using platform::Date;
using platform::Milliseconds;
using test_support::Raised;

class Locale : public testing::Test {
protected:
    const LocaleRecord& Read() {
        component.locale.KWOLocaleInit();
        return component.locale.Record();
    }
    /// The record of a user with one setting of another kind.
    LocaleRecord With(std::uint32_t type, TextView text) {
        desktop.locale.settings[type] = text;
        component::Component other(desktop.Services());
        other.locale.KWOLocaleInit();
        return other.locale.Record();
    }

    platform::simulated::SimulatedDesktop desktop;
    component::Component component{desktop.Services()};
    MKWOLocale& locale = component.locale;
};

TEST_F(Locale, FieldsAreReadFromTheUsersSettings) {
    const LocaleRecord& record = Read();

    EXPECT_EQ(record.language, 1033);
    EXPECT_EQ(record.primaryLanguage, 9);
    EXPECT_EQ(record.subLanguage, 1);
    EXPECT_FALSE(record.has24Hours);
    EXPECT_EQ(record.timeSeparator, u":");
    EXPECT_EQ(record.thousandSeparator, u",");
    EXPECT_EQ(record.decimalSeparator, u".");
    EXPECT_EQ(record.digits, 2);
    EXPECT_EQ(record.currencyDigits, 2);
    EXPECT_TRUE(record.leadingZero);
    EXPECT_EQ(record.negativeNumber, 1);
    EXPECT_EQ(record.negativeCurrency, 0);
    EXPECT_EQ(record.firstDayOfWeek, 6);
    EXPECT_EQ(record.dayNames, (std::array<Text, 7>{u"Mon", u"Tue", u"Wed", u"Thu", u"Fri", u"Sat", u"Sun"}));
    EXPECT_EQ(locale.TimeZoneInfo().bias, 300);
    EXPECT_EQ(locale.TimeZoneInfo().daylightName, u"Eastern Daylight Time");
    EXPECT_EQ(locale.TimeZoneId(), 1u);
    EXPECT_TRUE(locale.LocaleLoaded());
}

TEST_F(Locale, SettingsAreAskedForInOneOrderWithTheirBuffers) {
    Read();

    std::vector<std::string> expected = {"GetTimeZoneInformation", "GetLocaleInfo 1 32",  "GetLocaleInfo 35 32",
                                         "GetLocaleInfo 30 32",    "GetLocaleInfo 15 32", "GetLocaleInfo 14 2",
                                         "GetLocaleInfo 17 3",     "GetLocaleInfo 25 3",  "GetLocaleInfo 18 2",
                                         "GetLocaleInfo 4112 2",   "GetLocaleInfo 28 3",  "GetLocaleInfo 4108 4"};
    for (int type = 49; type <= 55; ++type)
        expected.push_back("GetLocaleInfo " + std::to_string(type) + " 4");
    EXPECT_EQ(desktop.log.Lines(), expected);
}

TEST_F(Locale, SettingsAreReadOnce) {
    Read();
    desktop.locale.settings[4108] = u"0";
    desktop.log.Clear();

    EXPECT_EQ(Read().firstDayOfWeek, 6);
    EXPECT_TRUE(desktop.log.Lines().empty());
}

TEST_F(Locale, NothingIsReadBeforeItIsNeeded) {
    EXPECT_FALSE(locale.LocaleLoaded());
    EXPECT_TRUE(desktop.log.Lines().empty());
}

TEST_F(Locale, LanguageIsHexadecimal) {
    EXPECT_EQ(With(1, u"0407").language, 0x407);
    EXPECT_EQ(With(1, u"0C0A").primaryLanguage, 10);
    EXPECT_EQ(With(1, u"0c0a").subLanguage, 3);
    EXPECT_EQ(With(1, u" 0409 ").language, 1033);
    EXPECT_EQ(With(1, u"04x9").language, 0);
    EXPECT_EQ(With(1, u"123456789").language, 0);
    EXPECT_EQ(With(1, u"3FF").primaryLanguage, 1023);
    EXPECT_EQ(With(1, u"3FF").subLanguage, 0);
    EXPECT_EQ(With(1, u"400").primaryLanguage, 0);
    EXPECT_EQ(With(1, u"400").subLanguage, 1);
    EXPECT_EQ(With(1, u"").language, 0);
}

TEST_F(Locale, FirstCharacterTellsTheTwentyFourHours) {
    EXPECT_TRUE(With(35, u"1").has24Hours);
    EXPECT_TRUE(With(35, u"12").has24Hours);
    EXPECT_FALSE(With(35, u"0").has24Hours);
    EXPECT_FALSE(With(35, u"").has24Hours);
}

TEST_F(Locale, LeadingZeroIsAnyNumberButZero) {
    EXPECT_TRUE(With(18, u"1").leadingZero);
    EXPECT_TRUE(With(18, u"2").leadingZero);
    EXPECT_FALSE(With(18, u"0").leadingZero);
    EXPECT_FALSE(With(18, u"x").leadingZero);
}

TEST_F(Locale, TextIsCutAtAZeroAndTrimmed) {
    EXPECT_EQ(With(30, TextView(u" h \0x", 5)).timeSeparator, u"h");
    EXPECT_EQ(With(15, u"\u00A0").thousandSeparator, u"\u00A0") << "only blanks are trimmed";
}

/// A platform whose answers hold a zero character and more.
class ZeroesWithin final : public platform::LocaleSource {
public:
    std::optional<Text> Setting(std::uint32_t type, std::uint32_t) override {
        constexpr std::uint32_t kLanguage = 1;
        return type == kLanguage ? Text(u"0409\0x", 6) : Text(u" 1 \0x", 5);
    }
    std::uint32_t QueryTimeZone(TimeZone&) override { return 0; }
};

TEST_F(Locale, AnswerEndsAtItsFirstZero) {
    ZeroesWithin source;
    MKWOLocale zeroed(source, desktop.clock, desktop.errors, component.error, component.routines);
    zeroed.KWOLocaleInit();

    const LocaleRecord& record = zeroed.Record();
    EXPECT_EQ(record.language, 1033);
    EXPECT_TRUE(record.has24Hours);
    EXPECT_EQ(record.timeSeparator, u"1");
    EXPECT_EQ(record.digits, 1);
    EXPECT_EQ(record.firstDayOfWeek, 1);
    EXPECT_EQ(record.dayNames[6], u"1");
}

TEST_F(Locale, NumberThatIsNoneIsZero) {
    EXPECT_EQ(With(17, u"x").digits, 0);
    EXPECT_EQ(With(17, u"2x").digits, 0);
    EXPECT_EQ(With(17, u"").digits, 0);
    EXPECT_EQ(With(17, u"-").digits, 0);
    EXPECT_EQ(With(17, u"--").digits, 0);
    EXPECT_EQ(With(17, u"/").digits, 0);
    EXPECT_EQ(With(17, u":").digits, 0);
    EXPECT_EQ(With(17, u"-2").digits, -2);
    EXPECT_EQ(With(17, u"+2").digits, 2);
    EXPECT_EQ(With(4108, u"Mo").firstDayOfWeek, 0);
}

TEST_F(Locale, MondayIsDayZero) {
    EXPECT_EQ(With(4108, u"0").firstDayOfWeek, 0);
    EXPECT_EQ(With(4108, u"6").firstDayOfWeek, 6);
}

TEST_F(Locale, FailingPlatformLeavesEverythingEmpty) {
    for (int call = 1; call <= 18; ++call)
        desktop.FailCall("GetLocaleInfo", call, 5);
    desktop.FailCall("GetTimeZoneInformation", 1, 5);

    const LocaleRecord& record = Read();

    EXPECT_EQ(record.language, 0);
    EXPECT_EQ(record.decimalSeparator, u"");
    EXPECT_EQ(record.firstDayOfWeek, 0);
    EXPECT_EQ(record.dayNames[6], u"");
    EXPECT_EQ(locale.TimeZoneId(), 0xFFFFFFFFu);
    EXPECT_EQ(locale.TimeZoneInfo().bias, 0);
    EXPECT_TRUE(locale.LocaleLoaded());
}

class SmallBuffersIntended : public Locale {};

TEST_F(SmallBuffersIntended, WhatDoesNotFitIsLost) {
    EXPECT_EQ(With(14, u",").decimalSeparator, u",");
    // A reader would expect the two characters.
    EXPECT_EQ(With(14, u",,").decimalSeparator, u"");

    EXPECT_EQ(With(17, u"10").digits, 10);
    EXPECT_EQ(With(17, u"100").digits, 0);
    EXPECT_EQ(With(25, u"99").currencyDigits, 99);
    EXPECT_EQ(With(25, u"100").currencyDigits, 0);
    EXPECT_EQ(With(28, u"15").negativeCurrency, 15);
    EXPECT_EQ(With(28, u"150").negativeCurrency, 0);
    EXPECT_EQ(With(4112, u"4").negativeNumber, 4);
    EXPECT_EQ(With(4112, u"10").negativeNumber, 0);
    EXPECT_EQ(With(18, u"10").leadingZero, false);
    EXPECT_EQ(With(4108, u"006").firstDayOfWeek, 6);
    EXPECT_EQ(With(4108, u"0006").firstDayOfWeek, 0);

    EXPECT_EQ(With(49, u"Mon").dayNames[0], u"Mon");
    EXPECT_EQ(With(49, u"Mond").dayNames[0], u"");
    EXPECT_EQ(With(55, u"Su").dayNames[6], u"Su");

    EXPECT_EQ(With(30, Text(31, u'x')).timeSeparator, Text(31, u'x'));
    EXPECT_EQ(With(30, Text(32, u'x')).timeSeparator, u"");
}

TEST_F(Locale, DateIsTheMillisecondsSince1601) {
    EXPECT_EQ(locale.KWO_DateToFILETIME({0}, false).scaled, 0);
    EXPECT_EQ(locale.KWO_DateToFILETIME({-109'205}, false).scaled, 0);
    EXPECT_EQ(locale.KWO_DateToFILETIME({-109'204}, false), Milliseconds::Whole(86'400'000));
    EXPECT_EQ(locale.KWO_DateToFILETIME({-109'206}, false), Milliseconds::Whole(-86'400'000));
    constexpr std::int64_t kNoon = 134'393'040'000'000'000;  // of 2026-11-16
    EXPECT_EQ(locale.KWO_DateToFILETIME({46'342.5}, false).scaled, kNoon);
}

TEST_F(Locale, DateIsRoundedToTheNearestWithHalvesToEven) {
    constexpr double kStep = 1.0 / 32'768;  // days: 26,367,187.5 hundreds of nanoseconds
    EXPECT_EQ(locale.KWO_DateToFILETIME({-109'205 + kStep}, false).scaled, 26'367'188);
    EXPECT_EQ(locale.KWO_DateToFILETIME({-109'205 + 3 * kStep}, false).scaled, 79'101'562);
    EXPECT_EQ(locale.KWO_DateToFILETIME({-109'205 - kStep}, false).scaled, -26'367'188);
    EXPECT_EQ(locale.KWO_DateToFILETIME({-109'205 - 3 * kStep}, false).scaled, -79'101'562);
}

TEST_F(Locale, DateOfZeroIsZeroAlsoInUtc) {
    desktop.clock.biasMinutes = 300;

    EXPECT_EQ(locale.KWO_DateToFILETIME({0}, true).scaled, 0);
}

TEST_F(Locale, LocalTimeBecomesUtcOnRequest) {
    desktop.clock.biasMinutes = 300;
    const Milliseconds local = locale.KWO_DateToFILETIME({46'342.5}, false);

    EXPECT_EQ(locale.KWO_DateToFILETIME({46'342.5}, true).scaled,
              local.scaled + Milliseconds::Whole(18'000'000).scaled);
}

TEST_F(Locale, DateThatCannotBecomeUtcRaisesThePlatformsError) {
    desktop.FailCall("LocalFileTimeToFileTime", 1, 5);
    const ComponentError error = Raised([&] { locale.KWO_DateToFILETIME({46'342}, true); });

    EXPECT_EQ(error.number, -5);
    EXPECT_EQ(error.source, u"MKWOLocale.KWO_DateToFILETIME");
}

TEST_F(Locale, FailureWithoutAReasonIsRaisedAllTheSame) {
    desktop.FailCall("LocalFileTimeToFileTime", 1, 0);
    const ComponentError error = Raised([&] { locale.KWO_DateToFILETIME({46'342}, true); });

    EXPECT_NE(error.number, 0);
    EXPECT_EQ(error.source, u"MKWOLocale.KWO_DateToFILETIME");
}

TEST_F(Locale, DateBeforeTheFirstFileTimeCannotBecomeUtc) {
    EXPECT_EQ(Raised([&] { locale.KWO_DateToFILETIME({-109'206}, true); }).number, -87);
    EXPECT_EQ(Raised([&] { locale.KWO_DateToFILETIME({-109'205}, true); }).number, 0);
}

TEST_F(Locale, DateBeyondTheTypeOverflows) {
    constexpr double kLastDay = 10'675'199 - 109'205;
    EXPECT_EQ(Raised([&] { locale.KWO_DateToFILETIME({kLastDay}, false); }).number, 0);
    EXPECT_EQ(Raised([&] { locale.KWO_DateToFILETIME({-10'675'199.0 - 109'205}, false); }).number, 0);
    // The last moments that the type holds, and those behind them.
    constexpr double kLast = 0x1.4272d43bc40b0p+23;
    constexpr double kFirst = -0x1.491d283bc40b0p+23;
    EXPECT_EQ(locale.KWO_DateToFILETIME({kLast}, false).scaled, 9'223'372'036'854'774'784);
    EXPECT_EQ(locale.KWO_DateToFILETIME({kFirst}, false).scaled, -9'223'372'036'854'774'784);
    for (const double days :
         {std::nextafter(kLast, 1e9), std::nextafter(kFirst, -1e9), kLastDay + 1, -10'675'200.0 - 109'205, std::nan(""),
          1e300, -1e300, std::numeric_limits<double>::infinity()}) {
        EXPECT_EQ(Raised([&] { locale.KWO_DateToFILETIME({days}, false); }).number, 6) << days;
    }
}

}  // namespace
}  // namespace kwo::messages
