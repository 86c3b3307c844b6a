#include <cstdio>
#include <cstring>

#include "allocation_count.h"
#include "crash.h"
#include "process_end.h"
#include "registered_as_allowed.h"

int main(int count, char** arguments) {
    if (count > 1 && std::strcmp(arguments[1], kwo::com_test::kEndWithAnArmedTimer) == 0) {
        return kwo::com_test::EndWithAnArmedTimer();
    }
    if (count > 1 && std::strcmp(arguments[1], kwo::com_test::kCrash) == 0) kwo::com_test::Crash();
    if (count > 1 && std::strcmp(arguments[1], kwo::com_test::kCrashInTheDll) == 0) kwo::com_test::CrashInTheDll();
    if (count > 1 && std::strcmp(arguments[1], kwo::com_test::kOverrun) == 0) kwo::com_test::OverrunHeap();
    if (count > 1 && std::strcmp(arguments[1], kwo::com_test::kOverrunStack) == 0) {
        kwo::com_test::OverrunStack();
        return 0;
    }
    // Sizes as they are, whatever the display's density.
    SetProcessDPIAware();
    ::testing::InitGoogleTest(&count, arguments);
    if (kwo::com_test::DistFolder().empty()) {
        std::fprintf(stderr, "com_tests: set KWO_DIST to the folder that holds KWOUtil.dll\n");
        return 2;
    }
    kwo::com_test::SwitchOffStringCache();
    ::testing::AddGlobalTestEnvironment(new kwo::com_test::RegisteredDll(kwo::com_test::DllPath()));
    return RUN_ALL_TESTS();
}
