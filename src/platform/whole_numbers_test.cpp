#include "platform/whole_numbers.h"

#include <gtest/gtest.h>

#include <cmath>

#include "support/raised.h"

namespace kwo::platform {
namespace {

using test_support::RaisedNumber;

constexpr std::int32_t kOverflow = 6;

TEST(RoundedTest, HalvesGoToTheEvenNumber) {
    EXPECT_EQ(Rounded<std::int16_t>(7.5), 8);
    EXPECT_EQ(Rounded<std::int16_t>(8.5), 8);
    EXPECT_EQ(Rounded<std::int16_t>(-7.5), -8);
    EXPECT_EQ(Rounded<std::int32_t>(2.4999), 2);
}

TEST(RoundedTest, WhatDoesNotFitOverflows) {
    EXPECT_EQ(Rounded<std::int16_t>(32'767.4), 32'767);
    EXPECT_EQ(Rounded<std::int16_t>(-32'768.4), -32'768);
    EXPECT_EQ(RaisedNumber([] { Rounded<std::int16_t>(32'767.5); }), kOverflow);
    EXPECT_EQ(RaisedNumber([] { Rounded<std::int16_t>(-32'769); }), kOverflow);
    EXPECT_EQ(RaisedNumber([] { Rounded<std::int32_t>(std::nan("")); }), kOverflow);
}

TEST(NarrowedTest, WhatDoesNotFitOverflows) {
    EXPECT_EQ(Narrowed<std::int16_t>(32'767), 32'767);
    EXPECT_EQ(Narrowed<std::int32_t>(INT32_MIN), INT32_MIN);
    EXPECT_EQ(RaisedNumber([] { Narrowed<std::int16_t>(32'768); }), kOverflow);
    EXPECT_EQ(RaisedNumber([] { Narrowed<std::int16_t>(-32'769); }), kOverflow);
    EXPECT_EQ(RaisedNumber([] { Narrowed<std::int32_t>(std::int64_t{INT32_MAX} + 1); }), kOverflow);
}

}  // namespace
}  // namespace kwo::platform
