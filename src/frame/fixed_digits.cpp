#include "frame/fixed_digits.h"

#include <algorithm>
#include <cstdint>

namespace kwo::frame {

using platform::Text;
using platform::TextView;

Text DecimalPoint(platform::Conversions& conversions) {
    const Text shown = conversions.FormatNumber(0, u"0.0");
    return shown.size() > 2 ? shown.substr(1, shown.size() - 2) : Text();
}

Text FixedDigits(platform::Currency value, int wholeDigits, int places, TextView point) {
    constexpr int kStoredPlaces = 4;
    const bool negative = value.scaled < 0;
    std::uint64_t digits = static_cast<std::uint64_t>(value.scaled);
    if (negative) digits = 0 - digits;
    std::uint64_t cut = 1;
    for (int place = places; place < kStoredPlaces; ++place)
        cut *= 10;
    digits = digits / cut + (digits % cut * 2 >= cut && cut > 1 ? 1 : 0);

    // From the last digit to the first.
    Text text;
    const bool zero = digits == 0;
    for (int place = 0; place < places; ++place, digits /= 10)
        text += static_cast<char16_t>(u'0' + digits % 10);
    text.append(point.rbegin(), point.rend());
    for (int place = 0; place < wholeDigits || digits != 0; ++place, digits /= 10)
        text += static_cast<char16_t>(u'0' + digits % 10);
    if (negative && !zero) text += u'-';
    std::reverse(text.begin(), text.end());
    return text;
}

}  // namespace kwo::frame
