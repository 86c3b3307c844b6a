#include <gtest/gtest.h>

#include "com_test.h"
#include "crash.h"
#include "second_instance.h"

namespace kwo::com_test {
namespace {

TEST(StackGuard, AnOverrunArrayEndsTheProcess) {
#ifdef _FORTIFY_SOURCE
    GTEST_SKIP() << "a checked build has the compiler's own library, which ends the process in another way";
#endif
    // STATUS_STACK_BUFFER_OVERRUN, which some headers lack.
    EXPECT_EQ(Hex(static_cast<HRESULT>(ExitCodeOfThisProgram(kOverrunStack))), Hex(static_cast<HRESULT>(0xC0000409)));
}

}  // namespace
}  // namespace kwo::com_test
