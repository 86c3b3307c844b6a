#include "platform/windows/windows_locale_source.h"

#include <windows.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

#include "contract_test.h"

namespace kwo::platform::windows {
namespace {

constexpr std::uint32_t kLanguage = 1;
constexpr std::uint32_t kFirstDayName = 42;
constexpr std::uint32_t kLastMonthName = 67;
constexpr int kLargeBuffer = 80;

Text WideSetting(std::uint32_t type) {
    wchar_t buffer[kLargeBuffer] = {};
    EXPECT_NE(::GetLocaleInfoW(LOCALE_USER_DEFAULT, type, buffer, kLargeBuffer), 0) << type;
    const std::wstring text = buffer;
    return {text.begin(), text.end()};
}

/// Also run in an environment whose language has another code page than the process; KWO_LANGUAGE is its identifier.
TEST(WindowsLocaleSource, NamesAreReadInTheCodePageOfTheirLanguage) {
    Context context{::GetModuleHandleW(nullptr), ModuleUse::Nobody()};
    WindowsLocaleSource locale(context);
    if (const char* const language = std::getenv("KWO_LANGUAGE")) {
        ASSERT_EQ(contract::Printed(locale.Setting(kLanguage, kLargeBuffer).value_or(Text())), language);
        ASSERT_NE(::GetACP(), 1250u);
    }

    for (std::uint32_t type = kFirstDayName; type <= kLastMonthName; ++type) {
        EXPECT_EQ(contract::Printed(locale.Setting(type, kLargeBuffer).value_or(Text())),
                  contract::Printed(WideSetting(type)))
            << type;
    }
}

}  // namespace
}  // namespace kwo::platform::windows
