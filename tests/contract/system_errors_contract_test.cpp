#include "contract_test.h"

namespace kwo::contract {
namespace {

class SystemErrorsContract : public ContractTest {
protected:
    static Text UpToZero(const Text& text) { return text.substr(0, text.find(u'\0')); }
    platform::SystemErrors& errors = platform().errors;
};

TEST_F(SystemErrorsContract, LastErrorIsWhatItWasSetTo) {
    for (const std::int32_t code : {0, 5, 12003, INT32_MAX, -1}) {
        errors.SetLast(code);
        EXPECT_EQ(errors.Last(), code);
        EXPECT_EQ(errors.Last(), code);
    }
}

TEST_F(SystemErrorsContract, LastErrorSurvivesWhatIsNoPlatformCallOfItsOwn) {
    errors.SetLast(1158);
    platform().conversions.ToText(std::int32_t{5});
    platform().clock.TickCount();

    EXPECT_EQ(errors.Last(), 1158);
}

TEST_F(SystemErrorsContract, KnownCodesHaveATextOfTheSystem) {
    for (const std::int32_t code : {2, 5, 6, 122, 234}) {
        const Text text = UpToZero(errors.SystemText(code));
        EXPECT_GE(text.size(), 4u) << code;
        EXPECT_LE(text.size(), 254u) << code;
    }
    EXPECT_NE(errors.SystemText(2), errors.SystemText(5));
}

TEST_F(SystemErrorsContract, UnknownCodeHasNoText) {
    EXPECT_EQ(UpToZero(errors.SystemText(31999)), u"");
    EXPECT_NE(errors.Last(), 0);
}

TEST_F(SystemErrorsContract, ModuleThatIsNotLoadedHasNoText) {
    EXPECT_EQ(UpToZero(errors.ModuleText(u"kwo no such module.dll", 12007)), u"");
}

TEST_F(SystemErrorsContract, NoInternetResponseIsAnEmptyOne) {
    const auto response = errors.LastInternetResponse(256);

    EXPECT_TRUE(response.succeeded);
    EXPECT_EQ(response.length, 0u);
    EXPECT_EQ(UpToZero(response.text), u"");
}

TEST_F(SystemErrorsContract, NoNetworkErrorHasNoText) {
    const auto error = errors.LastNetworkError();

    EXPECT_EQ(UpToZero(error.text), u"");
    EXPECT_EQ(UpToZero(error.provider), u"");
}

}  // namespace
}  // namespace kwo::contract
