#include "contract_test.h"
#include "platform/locale_source.h"

namespace kwo::contract {
namespace {

constexpr std::uint32_t kLanguage = 1;
constexpr std::uint32_t kDecimalSeparator = 14;
constexpr std::uint32_t kMondayAbbreviated = 49;
constexpr std::uint32_t kLargeBuffer = 32;

class LocaleSourceContract : public ContractTest {
protected:
    platform::LocaleSource& locale = platform().locale;
};

TEST_F(LocaleSourceContract, TellsTheSettingsOfTheUser) {
    const auto language = locale.Setting(kLanguage, kLargeBuffer);
    ASSERT_TRUE(language.has_value());
    EXPECT_EQ(language->size(), 4u) << Printed(*language);
    EXPECT_EQ(language->find_first_not_of(u"0123456789abcdefABCDEF"), Text::npos) << Printed(*language);
    EXPECT_FALSE(locale.Setting(kDecimalSeparator, kLargeBuffer).value_or(Text()).empty());
    EXPECT_FALSE(locale.Setting(kMondayAbbreviated, kLargeBuffer).value_or(Text()).empty());
}

TEST_F(LocaleSourceContract, TextFitsWithItsTerminatingZeroOrNotAtAll) {
    for (const std::uint32_t type : {kLanguage, kDecimalSeparator, kMondayAbbreviated}) {
        const auto whole = locale.Setting(type, kLargeBuffer);
        ASSERT_TRUE(whole.has_value());
        const auto length = static_cast<std::uint32_t>(whole->size());
        EXPECT_EQ(locale.Setting(type, length + 1), whole) << type;
        EXPECT_EQ(locale.Setting(type, length), std::nullopt) << type;
        EXPECT_EQ(locale.Setting(type, 1), std::nullopt) << type;
        EXPECT_EQ(locale.Setting(type, 0), std::nullopt) << type;
    }
}

TEST_F(LocaleSourceContract, SettingThatThereIsNotIsNothing) {
    EXPECT_EQ(locale.Setting(0x7FFF, kLargeBuffer), std::nullopt);
    EXPECT_NE(platform().errors.Last(), 0);
}

TEST_F(LocaleSourceContract, TellsTheTimeZone) {
    constexpr std::int32_t kHalfADayOfMinutes = 14 * 60;
    platform::LocaleSource::TimeZone zone;
    zone.bias = 99'999;

    const std::uint32_t id = locale.QueryTimeZone(zone);

    EXPECT_LE(id, 2u);
    EXPECT_LE(std::abs(zone.bias), kHalfADayOfMinutes);
    EXPECT_FALSE(zone.standardName.empty());
    EXPECT_EQ(zone.standardName.find(u'\0'), Text::npos);
}

}  // namespace
}  // namespace kwo::contract
