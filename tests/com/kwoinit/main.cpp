#include "companion_fixture.h"

#include <cstdio>

namespace kwo::com_test {
namespace {

/// One apartment and one registration for all tests.
class RegisteredCompanion : public ::testing::Environment {
public:
    void SetUp() override {
        ASSERT_EQ(Hex(CoInitialize(nullptr)), Hex(S_OK));
        ASSERT_EQ(Hex(Companion().RegisterAsAllowed()), Hex(S_OK));
    }
    void TearDown() override {
        EXPECT_EQ(Hex(Companion().UnregisterAsAllowed()), Hex(S_OK));
        CoUninitialize();
    }
};

}  // namespace
}  // namespace kwo::com_test

int main(int count, char** arguments) {
    ::testing::InitGoogleTest(&count, arguments);
    if (GetFileAttributesW(kwo::com_test::CompanionPath().c_str()) == INVALID_FILE_ATTRIBUTES) {
        std::fprintf(stderr, "kwoinit_com_tests: set KWO_DIST to the folder that holds KWOInit.dll\n");
        return 2;
    }
    ::testing::AddGlobalTestEnvironment(new kwo::com_test::RegisteredCompanion);
    return RUN_ALL_TESTS();
}
