#include "timers/due_index.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <random>
#include <stdexcept>

namespace kwo::timers {
namespace {

TEST(DueIndex, KnowsNothingBeforeItGrows) {
    const DueIndex index;

    EXPECT_EQ(index.Earliest(), DueIndex::kNever);
    EXPECT_EQ(index.FirstDue(DueIndex::kNever - 1), DueIndex::kNone);
}

TEST(DueIndex, FirstDueIsTheLowestPlaceAndNotTheEarliest) {
    DueIndex index;
    index.Grow(4);
    index.Set(1, 50);
    index.Set(3, 20);

    EXPECT_EQ(index.Earliest(), 20);
    EXPECT_EQ(index.FirstDue(19), DueIndex::kNone);
    EXPECT_EQ(index.FirstDue(20), 3u);
    EXPECT_EQ(index.FirstDue(49), 3u);
    EXPECT_EQ(index.FirstDue(50), 1u);
}

TEST(DueIndex, GrowsWithWhatItHolds) {
    DueIndex index;
    index.Grow(2);
    index.Set(1, 7);
    for (std::size_t size = 4; size <= 1'000; size += 2) {
        index.Grow(size);
        ASSERT_EQ(index.Earliest(), 7) << size;
        ASSERT_EQ(index.FirstDue(7), 1u) << size;
        index.Set(size - 1, 3);
        ASSERT_EQ(index.FirstDue(3), size - 1);
        index.Set(size - 1, DueIndex::kNever);
    }
}

TEST(DueIndex, RefusedGrowthChangesNothing) {
    constexpr std::size_t kTooMany = std::numeric_limits<std::size_t>::max() / 4;
    DueIndex index;
    EXPECT_THROW(index.Grow(kTooMany), std::length_error);
    EXPECT_EQ(index.Earliest(), DueIndex::kNever);

    index.Grow(20);
    index.Set(17, 30);
    index.Set(3, 50);
    EXPECT_THROW(index.Grow(kTooMany), std::length_error);

    EXPECT_EQ(index.Earliest(), 30);
    EXPECT_EQ(index.FirstDue(30), 17u);
    index.Set(18, 20);
    EXPECT_EQ(index.Earliest(), 20);
}

TEST(DueIndex, AgreesWithALookAtEveryPlace) {
    constexpr std::size_t kPlaces = 700;
    constexpr int kSteps = 40'000;
    std::mt19937 random(20261121);
    DueIndex index;
    std::vector<std::int64_t> plain;
    for (int step = 0; step < kSteps; ++step) {
        if (plain.size() < kPlaces && random() % 8 == 0) {
            plain.resize(plain.size() + 2, DueIndex::kNever);
            index.Grow(plain.size());
        }
        if (plain.empty()) continue;
        const std::size_t place = random() % plain.size();
        plain[place] = random() % 3 == 0 ? DueIndex::kNever : static_cast<std::int64_t>(random() % 1'000);
        index.Set(place, plain[place]);

        ASSERT_EQ(index.Earliest(), *std::min_element(plain.begin(), plain.end())) << step;
        const auto now = static_cast<std::int64_t>(random() % 1'000);
        const auto due = std::find_if(plain.begin(), plain.end(), [now](std::int64_t value) { return value <= now; });
        ASSERT_EQ(index.FirstDue(now),
                  due == plain.end() ? DueIndex::kNone : static_cast<std::size_t>(due - plain.begin()))
            << step;
    }
}

}  // namespace
}  // namespace kwo::timers
