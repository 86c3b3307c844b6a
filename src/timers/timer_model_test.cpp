#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "timers/naive_timers_fixture.h"

namespace kwo::timers {
namespace {

constexpr int kOperations = 10'000'000;

TEST(TimerModel, RegistryAgreesWithTheRulesTakenLiterally) {
    constexpr int kRowsEvery = 16;
    RegistrySide registry;
    LiteralSide literal;
    std::mt19937_64 random(20261121);
    int longestTable = 0;
    for (int operation = 0; operation < kOperations; ++operation) {
        const std::uint64_t seed = random() | 1;
        Step(registry, seed);
        Step(literal, seed);
        ASSERT_EQ(Summary(registry), Summary(literal)) << "operation " << operation;
        if (operation % kRowsEvery != 0) continue;
        const auto contents = registry.Contents();
        ASSERT_EQ(contents, literal.Contents()) << "operation " << operation;
        ASSERT_EQ(registry.References(), contents[0]) << "operation " << operation;
        longestTable = std::max(longestTable, static_cast<int>(contents[0]));
    }
    EXPECT_GT(longestTable, 12) << "the run has to fill the table";
    EXPECT_GT(registry.timers.last, kOperations / 20) << "and to arm timers";
}

}  // namespace
}  // namespace kwo::timers
