#include <cstdio>

#include "registered_as_allowed.h"

int main(int count, char** arguments) {
    ::testing::InitGoogleTest(&count, arguments);
    if (kwo::com_test::DistFolder().empty()) {
        std::fprintf(stderr, "kwoinit_com_tests: set KWO_DIST to the folder that holds KWOInit.dll and KWOUtil.dll\n");
        return 2;
    }
    ::testing::AddGlobalTestEnvironment(new kwo::com_test::RegisteredDll(kwo::com_test::CompanionPath()));
    return RUN_ALL_TESTS();
}
