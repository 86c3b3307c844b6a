#include "timers/alarm_index.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <new>
#include <random>
#include <set>
#include <utility>
#include <vector>

#include "platform/simulated/failing_memory.h"
#include "timers/timer_fixture.h"

namespace kwo::timers {
namespace {

using platform::simulated::FailingMemory;

/// Any row with that hash.
std::int32_t AnyOf(const AlarmIndex& index, std::uint32_t hash) {
    return index.Find(hash, [](std::int32_t) { return true; });
}

/// All rows with that hash.
std::vector<std::int32_t> AllOf(const AlarmIndex& index, std::uint32_t hash) {
    std::vector<std::int32_t> rows;
    EXPECT_EQ(index.Find(hash,
                         [&](std::int32_t row) {
                             rows.push_back(row);
                             return false;
                         }),
              0);
    std::ranges::sort(rows);
    return rows;
}

TEST(AlarmIndex, FindsNothingBeforeItGrows) {
    const AlarmIndex index;

    EXPECT_EQ(AnyOf(index, 0), 0);
}

TEST(AlarmIndex, TellsRowsWithTheSameHashApart) {
    AlarmIndex index;
    index.Grow(3);
    for (const std::int32_t row : {7, 5, 9})
        index.Add(3, row);

    EXPECT_EQ(index.Find(3, [](std::int32_t row) { return row == 5; }), 5);
    EXPECT_EQ(AllOf(index, 3), (std::vector<std::int32_t>{5, 7, 9}));
    index.Remove(3, 7);
    EXPECT_EQ(AllOf(index, 3), (std::vector<std::int32_t>{5, 9}));
}

TEST(AlarmIndex, NeedNotLookAtRowsWithAnotherHash) {
    AlarmIndex index;
    index.Grow(8);
    for (std::uint32_t hash = 0; hash < 8; ++hash)
        index.Add(hash, static_cast<std::int32_t>(hash + 1));

    for (std::uint32_t hash = 0; hash < 8; ++hash)
        EXPECT_EQ(AllOf(index, hash), std::vector{static_cast<std::int32_t>(hash + 1)});
    for (std::uint32_t hash = 8; hash < 1'000; ++hash)
        ASSERT_EQ(AnyOf(index, hash), 0) << hash;
}

TEST(AlarmIndex, ChangesNothingWhenThereIsNoMemory) {
    AlarmIndex index;
    index.Grow(1);
    index.Add(5, 1);
    {
        const FailingMemory memory(1);
        EXPECT_THROW(index.Grow(10'000), std::bad_alloc);
    }

    EXPECT_EQ(AnyOf(index, 5), 1);
    index.Add(6, 2);
    EXPECT_EQ(AnyOf(index, 6), 2);
}

TEST(AlarmIndex, AHashDependsOnTheOwnerAndTheTag) {
    std::vector<std::string> told;
    const RecordingOwner owners[2] = {{told, "a"}, {told, "b"}};
    constexpr std::int32_t kTags = 10'000;
    std::set<std::uint32_t> hashes;
    for (const RecordingOwner& owner : owners) {
        for (std::int32_t tag = -kTags; tag < kTags; ++tag)
            hashes.insert(AlarmIndex::HashOf(owner, tag));
    }

    EXPECT_EQ(hashes.size(), 4u * kTags);
}

// Few hashes, so that rows stand far from where they belong.
TEST(AlarmIndex, AgreesWithALookAtEveryRow) {
    constexpr int kSteps = 8'000;
    constexpr std::size_t kRoom = 64;
    std::mt19937 random(20261123);
    for (const std::uint32_t hashes : {1u, 5u, 40u, 4'000u}) {
        AlarmIndex index;
        std::vector<std::pair<std::uint32_t, std::int32_t>> plain;
        std::size_t room = 0;
        std::int32_t last = 0;
        for (int step = 0; step < kSteps; ++step) {
            if (room < kRoom && step % 128 == 0) index.Grow(room += 2);
            // Mostly full.
            if (plain.size() < room && random() % 8 < 6) {
                plain.emplace_back(random() % hashes - hashes / 2, ++last);
                index.Add(plain.back().first, plain.back().second);
            } else if (!plain.empty()) {
                const auto which = plain.begin() + static_cast<std::ptrdiff_t>(random() % plain.size());
                index.Remove(which->first, which->second);
                plain.erase(which);
            }
            const std::uint32_t hash = random() % hashes - hashes / 2;
            std::vector<std::int32_t> expected;
            for (const auto& [one, row] : plain) {
                if (one == hash) expected.push_back(row);
            }
            std::ranges::sort(expected);
            ASSERT_EQ(AllOf(index, hash), expected) << hashes << " hashes, step " << step;
        }
        ASSERT_EQ(room, kRoom);
    }
}

}  // namespace
}  // namespace kwo::timers
