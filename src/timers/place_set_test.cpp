#include "timers/place_set.h"

#include <gtest/gtest.h>

#include <new>
#include <random>
#include <set>

#include "platform/simulated/failing_memory.h"

namespace kwo::timers {
namespace {

using platform::simulated::FailingMemory;

TEST(PlaceSet, HasNoPlaceBeforeItGrows) {
    PlaceSet set;

    EXPECT_EQ(set.TakeLowest(), PlaceSet::kNone);
}

TEST(PlaceSet, GivesTheLowestFirst) {
    PlaceSet set;
    set.Grow(10'000);
    for (const std::size_t place : {9'999u, 4u, 63u, 64u, 5'000u})
        set.Add(place);

    EXPECT_EQ(set.TakeLowest(), 4u);
    EXPECT_EQ(set.TakeLowest(), 63u);
    set.Add(0);
    EXPECT_EQ(set.TakeLowest(), 0u);
    EXPECT_EQ(set.TakeLowest(), 64u);
    EXPECT_EQ(set.TakeLowest(), 5'000u);
    EXPECT_EQ(set.TakeLowest(), 9'999u);
    EXPECT_EQ(set.TakeLowest(), PlaceSet::kNone);
}

TEST(PlaceSet, GrowsWithWhatItHolds) {
    PlaceSet set;
    for (std::size_t size = 2; size <= 10'000; size += 2) {
        set.Grow(size);
        set.Add(size - 1);
    }
    for (std::size_t place = 1; place < 10'000; place += 2)
        ASSERT_EQ(set.TakeLowest(), place);
    EXPECT_EQ(set.TakeLowest(), PlaceSet::kNone);
}

TEST(PlaceSet, ChangesNothingWhenThereIsNoMemory) {
    int failures = 0;
    bool failed = true;
    for (int nth = 1; failed; ++nth) {
        PlaceSet set;
        set.Grow(2);
        set.Add(1);
        {
            const FailingMemory memory(nth);
            try {
                set.Grow(10'000);
            } catch (const std::bad_alloc&) {
                ++failures;
            }
            failed = memory.HasFailed();
        }
        set.Add(0);
        ASSERT_EQ(set.TakeLowest(), 0u) << nth;
        ASSERT_EQ(set.TakeLowest(), 1u) << nth;
        ASSERT_EQ(set.TakeLowest(), PlaceSet::kNone) << nth;
    }
    EXPECT_GT(failures, 2) << "growing has to need memory";
}

TEST(PlaceSet, AgreesWithAnOrderedSet) {
    constexpr std::size_t kPlaces = 20'000;
    constexpr int kSteps = 200'000;
    std::mt19937 random(20261123);
    PlaceSet set;
    std::set<std::size_t> plain;
    std::size_t size = 0;
    for (int step = 0; step < kSteps; ++step) {
        if (size < kPlaces && random() % 4 == 0) {
            size += 2;
            set.Grow(size);
        }
        // Now mostly full, now mostly empty.
        const bool adds = random() % 8 < (step / 10'000 % 2 == 0 ? 6u : 2u);
        if (adds && size > 0) {
            const std::size_t place = random() % size;
            plain.insert(place);
            set.Add(place);
        } else {
            const std::size_t lowest = plain.empty() ? PlaceSet::kNone : *plain.begin();
            ASSERT_EQ(set.TakeLowest(), lowest) << step;
            plain.erase(lowest);
        }
    }
}

}  // namespace
}  // namespace kwo::timers
