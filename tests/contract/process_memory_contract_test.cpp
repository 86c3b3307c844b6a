#include "contract_test.h"

namespace kwo::contract {
namespace {

using platform::ProcessMemory;

constexpr std::int32_t kInvalidParameter = 87;

class ProcessMemoryContract : public ContractTest {
protected:
    ProcessMemory& memory = platform().processMemory;
};

TEST_F(ProcessMemoryContract, TellsWhatThisProcessUses) {
    const Handle process = memory.Open(ProcessMemory::kQueryInformation, false, platform().host.ProcessId());
    ASSERT_NE(process, 0);

    const auto counters = memory.Query(process);

    ASSERT_TRUE(counters.has_value());
    EXPECT_EQ_BUT_WINE(counters->pageFaults > 0, true, false);
    EXPECT_GT(counters->workingSet, 100'000u);
    EXPECT_GT(counters->pageFile, 100'000u);
    EXPECT_LT(counters->pageFile, 1ull << 40);
    memory.Close(process);
}

TEST_F(ProcessMemoryContract, AClosedHandleTellsNothing) {
    const Handle process = memory.Open(ProcessMemory::kQueryInformation, false, platform().host.ProcessId());
    memory.Close(process);
    EXPECT_EQ(memory.Query(process), std::nullopt);
    EXPECT_EQ(platform().errors.Last(), kInvalidHandle);
}

TEST_F(ProcessMemoryContract, ThereIsNoProcessOfThatNumber) {
    EXPECT_EQ(memory.Open(ProcessMemory::kQueryInformation, false, 0x7FFFFFF1), 0);
    EXPECT_EQ(platform().errors.Last(), kInvalidParameter);
}

}  // namespace
}  // namespace kwo::contract
