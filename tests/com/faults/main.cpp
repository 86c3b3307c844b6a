#include <cstdio>

#include "allocation_count.h"
#include "registered_as_allowed.h"

int main(int count, char** arguments) {
    ::testing::InitGoogleTest(&count, arguments);
    if (kwo::com_test::DistFolder().empty()) {
        std::fprintf(stderr, "import_fault_tests: set KWO_DIST to the folder that holds KWOUtil.dll\n");
        return 2;
    }
    kwo::com_test::SwitchOffStringCache();
    // The companion is found in the registry; the component is not looked for there.
    ::testing::AddGlobalTestEnvironment(new kwo::com_test::RegisteredDll(kwo::com_test::CompanionPath()));
    return RUN_ALL_TESTS();
}
