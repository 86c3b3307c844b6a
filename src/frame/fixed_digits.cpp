#include "frame/fixed_digits.h"

#include <array>
#include <cstdint>

namespace kwo::frame {

using platform::Text;
using platform::TextView;

Text DecimalPoint(platform::Conversions& conversions) {
    const Text shown = conversions.FormatNumber(0, u"0.0");
    return shown.size() > 2 ? shown.substr(1, shown.size() - 2) : Text();
}

void AppendFixedDigits(Text& text, platform::Currency value, int wholeDigits, int places, TextView point) {
    constexpr int kStoredPlaces = 4;
    const bool negative = value.scaled < 0;
    std::uint64_t digits = static_cast<std::uint64_t>(value.scaled);
    if (negative) digits = 0 - digits;
    std::uint64_t cut = 1;
    for (int place = places; place < kStoredPlaces; ++place)
        cut *= 10;
    digits = digits / cut + (digits % cut * 2 >= cut ? 1 : 0);
    if (negative && digits != 0) text += u'-';

    // All digits, from the last one to the first.
    std::array<char16_t, 32> shown;
    auto first = shown.end();
    for (int count = 0; count < places + wholeDigits || digits != 0; ++count, digits /= 10)
        *--first = static_cast<char16_t>(u'0' + digits % 10);
    text.append(first, shown.end() - places);
    text += point;
    text.append(shown.end() - places, shown.end());
}

}  // namespace kwo::frame
