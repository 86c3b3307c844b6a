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

    EXPECT_EQ(record.LocaleLanguage, 1033);
    EXPECT_EQ(record.LocalePrimaryLanguage, 9);
    EXPECT_EQ(record.LocaleSubLanguage, 1);
    EXPECT_FALSE(record.Locale24Hour);
    EXPECT_EQ(record.LocaleTimeSep, u":");
    EXPECT_EQ(record.LocaleThousandSep, u",");
    EXPECT_EQ(record.LocaleDecimalSep, u".");
    EXPECT_EQ(record.LocaleDigits, 2);
    EXPECT_EQ(record.LocaleCurrDigits, 2);
    EXPECT_TRUE(record.LocaleLeadingZero);
    EXPECT_EQ(record.LocaleNegNumber, 1);
    EXPECT_EQ(record.LocaleNegCurr, 0);
    EXPECT_EQ(record.LocaleFirstDayOfWeek, 6);
    EXPECT_EQ(record.LocaleDayAbbrev, (std::array<Text, 7>{u"Mon", u"Tue", u"Wed", u"Thu", u"Fri", u"Sat", u"Sun"}));
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

    EXPECT_EQ(Read().LocaleFirstDayOfWeek, 6);
    EXPECT_TRUE(desktop.log.Lines().empty());
}

TEST_F(Locale, NothingIsReadBeforeItIsNeeded) {
    EXPECT_FALSE(locale.LocaleLoaded());
    EXPECT_TRUE(desktop.log.Lines().empty());
}

TEST_F(Locale, LanguageIsHexadecimal) {
    EXPECT_EQ(With(1, u"0407").LocaleLanguage, 0x407);
    EXPECT_EQ(With(1, u"0C0A").LocalePrimaryLanguage, 10);
    EXPECT_EQ(With(1, u"0c0a").LocaleSubLanguage, 3);
    EXPECT_EQ(With(1, u" 0409 ").LocaleLanguage, 1033);
    EXPECT_EQ(With(1, u"04x9").LocaleLanguage, 0);
    EXPECT_EQ(With(1, u"123456789").LocaleLanguage, 0);
    EXPECT_EQ(With(1, u"3FF").LocalePrimaryLanguage, 1023);
    EXPECT_EQ(With(1, u"3FF").LocaleSubLanguage, 0);
    EXPECT_EQ(With(1, u"400").LocalePrimaryLanguage, 0);
    EXPECT_EQ(With(1, u"400").LocaleSubLanguage, 1);
    EXPECT_EQ(With(1, u"").LocaleLanguage, 0);
}

TEST_F(Locale, FirstCharacterTellsTheTwentyFourHours) {
    EXPECT_TRUE(With(35, u"1").Locale24Hour);
    EXPECT_TRUE(With(35, u"12").Locale24Hour);
    EXPECT_FALSE(With(35, u"0").Locale24Hour);
    EXPECT_FALSE(With(35, u"").Locale24Hour);
}

TEST_F(Locale, LeadingZeroIsAnyNumberButZero) {
    EXPECT_TRUE(With(18, u"1").LocaleLeadingZero);
    EXPECT_TRUE(With(18, u"2").LocaleLeadingZero);
    EXPECT_FALSE(With(18, u"0").LocaleLeadingZero);
    EXPECT_FALSE(With(18, u"x").LocaleLeadingZero);
}

TEST_F(Locale, TextIsCutAtAZeroAndTrimmed) {
    EXPECT_EQ(With(30, TextView(u" h \0x", 5)).LocaleTimeSep, u"h");
    EXPECT_EQ(With(15, u"\u00A0").LocaleThousandSep, u"\u00A0") << "only blanks are trimmed";
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
    EXPECT_EQ(record.LocaleLanguage, 1033);
    EXPECT_TRUE(record.Locale24Hour);
    EXPECT_EQ(record.LocaleTimeSep, u"1");
    EXPECT_EQ(record.LocaleDigits, 1);
    EXPECT_EQ(record.LocaleFirstDayOfWeek, 1);
    EXPECT_EQ(record.LocaleDayAbbrev[6], u"1");
}

TEST_F(Locale, NumberThatIsNoneIsZero) {
    EXPECT_EQ(With(17, u"x").LocaleDigits, 0);
    EXPECT_EQ(With(17, u"2x").LocaleDigits, 0);
    EXPECT_EQ(With(17, u"").LocaleDigits, 0);
    EXPECT_EQ(With(17, u"-").LocaleDigits, 0);
    EXPECT_EQ(With(17, u"--").LocaleDigits, 0);
    EXPECT_EQ(With(17, u"/").LocaleDigits, 0);
    EXPECT_EQ(With(17, u":").LocaleDigits, 0);
    EXPECT_EQ(With(17, u"-2").LocaleDigits, -2);
    EXPECT_EQ(With(17, u"+2").LocaleDigits, 2);
    EXPECT_EQ(With(4108, u"Mo").LocaleFirstDayOfWeek, 0);
}

TEST_F(Locale, MondayIsDayZero) {
    EXPECT_EQ(With(4108, u"0").LocaleFirstDayOfWeek, 0);
    EXPECT_EQ(With(4108, u"6").LocaleFirstDayOfWeek, 6);
}

TEST_F(Locale, FailingPlatformLeavesEverythingEmpty) {
    for (int call = 1; call <= 18; ++call)
        desktop.FailCall("GetLocaleInfo", call, 5);
    desktop.FailCall("GetTimeZoneInformation", 1, 5);

    const LocaleRecord& record = Read();

    EXPECT_EQ(record.LocaleLanguage, 0);
    EXPECT_EQ(record.LocaleDecimalSep, u"");
    EXPECT_EQ(record.LocaleFirstDayOfWeek, 0);
    EXPECT_EQ(record.LocaleDayAbbrev[6], u"");
    EXPECT_EQ(locale.TimeZoneId(), 0xFFFFFFFFu);
    EXPECT_EQ(locale.TimeZoneInfo().bias, 0);
    EXPECT_TRUE(locale.LocaleLoaded());
}

class SmallBuffersIntended : public Locale {};

TEST_F(SmallBuffersIntended, WhatDoesNotFitIsLost) {
    EXPECT_EQ(With(14, u",").LocaleDecimalSep, u",");
    // A reader would expect the two characters.
    EXPECT_EQ(With(14, u",,").LocaleDecimalSep, u"");

    EXPECT_EQ(With(17, u"10").LocaleDigits, 10);
    EXPECT_EQ(With(17, u"100").LocaleDigits, 0);
    EXPECT_EQ(With(25, u"99").LocaleCurrDigits, 99);
    EXPECT_EQ(With(25, u"100").LocaleCurrDigits, 0);
    EXPECT_EQ(With(28, u"15").LocaleNegCurr, 15);
    EXPECT_EQ(With(28, u"150").LocaleNegCurr, 0);
    EXPECT_EQ(With(4112, u"4").LocaleNegNumber, 4);
    EXPECT_EQ(With(4112, u"10").LocaleNegNumber, 0);
    EXPECT_EQ(With(18, u"10").LocaleLeadingZero, false);
    EXPECT_EQ(With(4108, u"006").LocaleFirstDayOfWeek, 6);
    EXPECT_EQ(With(4108, u"0006").LocaleFirstDayOfWeek, 0);

    EXPECT_EQ(With(49, u"Mon").LocaleDayAbbrev[0], u"Mon");
    EXPECT_EQ(With(49, u"Mond").LocaleDayAbbrev[0], u"");
    EXPECT_EQ(With(55, u"Su").LocaleDayAbbrev[6], u"Su");

    EXPECT_EQ(With(30, Text(31, u'x')).LocaleTimeSep, Text(31, u'x'));
    EXPECT_EQ(With(30, Text(32, u'x')).LocaleTimeSep, u"");
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
