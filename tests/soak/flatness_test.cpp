#include "flatness.h"

#include <gtest/gtest.h>

namespace kwo::soak {
namespace {

using Values = std::vector<long long>;

struct Field {
    const char* name;
    long long bound;
    void (*set)(Census& census, long long value);
};
const Field kFields[] = {
    {"handles", 3, [](Census& census, long long value) { census.handles = static_cast<long>(value); }},
    {"GDI objects", 3, [](Census& census, long long value) { census.gdiObjects = static_cast<long>(value); }},
    {"user objects", 2, [](Census& census, long long value) { census.userObjects = static_cast<long>(value); }},
    {"private bytes", 500'000, [](Census& census, long long value) { census.privateBytes = value; }},
    {"heap bytes", 3'000, [](Census& census, long long value) { census.heapBytes = value; }},
    {"live objects", 0, [](Census& census, long long value) { census.liveObjects = static_cast<long>(value); }},
};

/// What grows in a series of states that differ in one field.
std::vector<std::string> GrowingOf(const Field& field, const Values& values) {
    Flatness flatness(values.size());
    for (const long long value : values) {
        Census census;
        field.set(census, value);
        flatness.Add(census);
    }
    std::vector<std::string> table;
    const std::vector<std::string> growing = flatness.Growing(table);
    EXPECT_EQ(table.size(), std::size(kFields));
    return growing;
}

/// A series of states, `step` more in each.
Values Rising(long long step, int count = Flatness::kFewest) {
    Values values;
    for (int at = 0; at < count; ++at)
        values.push_back(1'000 + step * at);
    return values;
}

void ExpectNoGrowth(const Values& values) {
    for (const Field& field : kFields)
        EXPECT_TRUE(GrowingOf(field, values).empty()) << field.name;
}

TEST(Flatness, WhatStaysOrFallsDoesNotGrow) {
    ExpectNoGrowth(Rising(0));
    ExpectNoGrowth(Rising(-100));
}

TEST(Flatness, WhatIsLostInEachRoundShowsInItsFieldAlone) {
    for (const Field& field : kFields) {
        const long long step = field.bound / 8 + 1;
        for (const int count : {9, 10, 17, 100}) {
            const std::vector<std::string> growing = GrowingOf(field, Rising(step, count));
            ASSERT_EQ(growing.size(), 1u) << field.name << ", " << count;
            EXPECT_EQ(growing[0].find(field.name), 0u) << growing[0];
        }
    }
}

TEST(Flatness, AsMuchAsTheBoundIsNoGrowth) {
    const Field& bytes = kFields[3];
    EXPECT_TRUE(GrowingOf(bytes, Rising(500'000 / 8)).empty());
    EXPECT_EQ(GrowingOf(bytes, Rising(500'000 / 8 + 1)).size(), 1u);
}

TEST(Flatness, APeakInSomeOfItsPartsDoesNotCount) {
    Values values = Rising(0, 90);
    for (std::size_t at = 0; at < values.size(); at += 3)
        values[at] += 100'000'000;
    ExpectNoGrowth(values);
}

TEST(Flatness, PeaksThatGrowDoNotCount) {
    Values values = Rising(0, 90);
    for (std::size_t at = 0; at < values.size(); at += 3)
        values[at] += static_cast<long long>(at) * 1'000'000;
    ExpectNoGrowth(values);
}

TEST(Flatness, WhatHasBecomeLargerOnceIsNoSteadyGrowth) {
    Values values = Rising(0, 90);
    for (std::size_t at = 40; at < values.size(); ++at)
        values[at] += 100'000'000;
    ExpectNoGrowth(values);
}

TEST(Flatness, SteadyGrowthShowsThroughPeaksAndJumps) {
    Values values = Rising(1, 90);
    for (std::size_t at = 0; at < values.size(); at += 3)
        values[at] += 100'000;
    for (std::size_t at = 40; at < values.size(); ++at)
        values[at] += 5'000;
    EXPECT_EQ(GrowingOf(kFields[0], values).size(), 1u);
}

TEST(Flatness, HalfOfTheStepsAreEnough) {
    const Field& objects = kFields[5];
    EXPECT_EQ(GrowingOf(objects, {0, 1, 1, 2, 2, 3, 3, 4, 4}).size(), 1u);
    EXPECT_TRUE(GrowingOf(objects, {0, 1, 1, 2, 2, 3, 3, 3, 3}).empty());
}

TEST(Flatness, TheStepInTheMiddleLiesBetweenTwo) {
    const Field& bytes = kFields[3];
    EXPECT_TRUE(GrowingOf(bytes, {0, 0, 0, 0, 0, 125'000, 250'000, 375'000, 500'000}).empty());
    EXPECT_EQ(GrowingOf(bytes, {0, 0, 0, 0, 0, 125'001, 250'002, 375'003, 500'004}).size(), 1u);
}

TEST(Flatness, KnowsHowManyStatesItHas) {
    Flatness flatness(2);
    EXPECT_EQ(flatness.Count(), 0u);
    flatness.Add({});
    flatness.Add({});
    EXPECT_EQ(flatness.Count(), 2u);
}

}  // namespace
}  // namespace kwo::soak
