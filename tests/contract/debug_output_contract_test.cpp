#include "contract_test.h"

namespace kwo::contract {
namespace {

class DebugOutputContract : public ContractTest {};

TEST_F(DebugOutputContract, ShowsLinesInTheSystemsCodePageUpToAZero) {
    outside().ListenToDebugOutput();

    platform().debugOutput.Write(u"first line");
    platform().debugOutput.Write(u"caf\u00E9 \u4E2D");
    platform().debugOutput.Write(TextView(u"cut\0off", 7));

    EXPECT_EQ(outside().DebugOutputHeard(), (std::vector<std::string>{"first line", "caf\xE9 ?", "cut"}));
}

TEST_F(DebugOutputContract, LeavesTheLastErrorAlone) {
    platform().errors.SetLast(7);
    platform().debugOutput.Write(u"line");
    EXPECT_EQ(platform().errors.Last(), 7);
}

}  // namespace
}  // namespace kwo::contract
