#include "frame/fixed_digits.h"

#include <gtest/gtest.h>

#include "platform/simulated/simulated_desktop.h"

namespace kwo::frame {
namespace {

using platform::Currency;
using platform::Text;
using platform::TextView;

Text FixedDigits(Currency value, int wholeDigits, int places, TextView point) {
    Text text;
    AppendFixedDigits(text, value, wholeDigits, places, point);
    return text;
}

TEST(FixedDigitsTest, AreThoseOfTheConversions) {
    platform::simulated::SimulatedDesktop desktop;
    for (const std::int64_t scaled : {0ll, 1ll, 4ll, 5ll, 49ll, 50ll, 51ll, 1535ll, 24'100ll, 24'149ll, 24'150ll,
                                      9'999'999ll, 10'000'000ll, 123'456'789ll, -5ll, -50ll, -15'350ll}) {
        const Currency value{scaled};
        EXPECT_EQ(FixedDigits(value, 1, 3, u"."), desktop.conversions.FormatNumber(value.AsDouble(), u"#0.000"))
            << scaled;
        EXPECT_EQ(FixedDigits(value, 3, 2, u"."), desktop.conversions.FormatNumber(value.AsDouble(), u"000.00"))
            << scaled;
        EXPECT_EQ(FixedDigits(value, 1, 4, u"."), desktop.conversions.FormatNumber(value.AsDouble(), u"0.0000"))
            << scaled;
    }
}

TEST(FixedDigitsTest, ThePointIsTheOneGiven) {
    EXPECT_EQ(FixedDigits({24'100}, 3, 2, u","), u"002,41");
    EXPECT_EQ(FixedDigits({24'100}, 1, 1, u"<>"), u"2<>4");
}

TEST(FixedDigitsTest, ThePointIsTheOneOfTheLocale) {
    platform::simulated::SimulatedDesktop desktop;
    EXPECT_EQ(DecimalPoint(desktop.conversions), u".");
}

}  // namespace
}  // namespace kwo::frame
