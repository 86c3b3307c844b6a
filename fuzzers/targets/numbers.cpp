// Hexadecimal numbers, durations, digits of a log and dates as times of a file, against arithmetic that is written out.

#include <cmath>
#include <cstdio>
#include <string>

#include "component/component.h"
#include "frame/duration.h"
#include "frame/fixed_digits.h"
#include "platform/component_error.h"
#include "platform/simulated/simulated_desktop.h"
#include "target.h"

namespace kwo::frame {
namespace {

using platform::ComponentError;
using platform::RuntimeError;

constexpr auto kOverflow = static_cast<std::int32_t>(RuntimeError::Overflow);

Text Wide(const std::string& text) {
    return {text.begin(), text.end()};
}

/// The number of the error that `action` raises; 0 if it raises none.
template <class Action>
std::int32_t ErrorOf(Action&& action) {
    try {
        action();
        return 0;
    } catch (const ComponentError& error) {
        return error.number;
    }
}

void Hexadecimal(component::Component& component, const Text& text) {
    std::int64_t expected = 0;
    std::int32_t expectedError = 0;
    for (const char16_t c : text) {
        const std::string digits = "0123456789abcdefABCDEF";
        const std::size_t place = c < 128 ? digits.find(static_cast<char>(c)) : std::string::npos;
        if (place == std::string::npos) {
            expectedError = kInvalidHexDigit;
            break;
        }
        expected = expected * 16 + static_cast<std::int64_t>(place < 16 ? place : place - 6);
        if (expected > 0xFFFFFFFF) {
            expectedError = kOverflow;
            break;
        }
    }
    std::int32_t value = 0;
    const std::int32_t error = ErrorOf([&] { value = component.routines.KWO_HexToLong(text); });
    KWO_HOLDS(error == expectedError);
    KWO_HOLDS(error != 0 || static_cast<std::uint32_t>(value) == static_cast<std::uint64_t>(expected));
    if (error == kInvalidHexDigit) KWO_HOLDS(component.error.Saved().number == error);
}

void Duration(platform::Conversions& conversions, double days) {
    constexpr double kMostDays = 1e9;
    if (!(std::fabs(days) < kMostDays)) return;
    Text text;
    KWO_HOLDS(ErrorOf([&] { text = KWO_FormatDuration(conversions, {days}); }) == 0);
    const std::int64_t seconds = std::llrint(std::fabs(days) * 86'400);
    char shown[64];
    if (seconds < 86'400) {
        std::snprintf(shown, sizeof shown, "%d:%02d:%02d", static_cast<int>(seconds / 3'600),
                      static_cast<int>(seconds / 60 % 60), static_cast<int>(seconds % 60));
    } else {
        std::snprintf(shown, sizeof shown, "%lld:%02d:%02d:%02d", static_cast<long long>(seconds / 86'400),
                      static_cast<int>(seconds / 3'600 % 24), static_cast<int>(seconds / 60 % 60),
                      static_cast<int>(seconds % 60));
    }
    KWO_HOLDS(text == Wide(shown));
}

void Digits(std::int64_t scaled, int wholeDigits, int places) {
    Text text;
    AppendFixedDigits(text, {scaled}, wholeDigits, places, u".");
    std::uint64_t unit = 1;
    for (int place = places; place < 4; ++place)
        unit *= 10;
    const std::uint64_t magnitude =
        scaled < 0 ? 0 - static_cast<std::uint64_t>(scaled) : static_cast<std::uint64_t>(scaled);
    std::string digits = std::to_string((magnitude + unit / 2) / unit);
    const bool isZero = digits == "0";
    while (digits.size() < static_cast<std::size_t>(wholeDigits + places))
        digits.insert(digits.begin(), '0');
    digits.insert(digits.end() - places, '.');
    KWO_HOLDS(text == Wide((scaled < 0 && !isZero ? "-" : "") + digits));
}

void FileTime(component::Component& component, double days) {
    platform::Milliseconds time;
    const std::int32_t error = ErrorOf([&] { time = component.locale.KWO_DateToFILETIME({days}, false); });
    const double expected = (days + 109'205) * 86'400'000;
    if (!(std::fabs(expected) < 900e12)) {
        KWO_HOLDS(error == 0 || error == kOverflow);
        if (!(std::fabs(expected) < 1e15)) KWO_HOLDS(error == kOverflow);
        return;
    }
    KWO_HOLDS(error == 0);
    KWO_HOLDS(days == 0 ? time.scaled == 0 : std::fabs(time.AsDouble() - expected) < 1);
}

KWO_FUZZ_TARGET(numbers) {
    platform::simulated::SimulatedDesktop desktop;
    component::Component component(desktop.Services());
    while (!input.IsEmpty()) {
        switch (input.Below(4)) {
            case 0:
                Hexadecimal(component, input.Text());
                break;
            case 1:
                Duration(desktop.conversions, input.Real());
                break;
            case 2: {
                const auto scaled = input.Whole<std::int64_t>();
                const int wholeDigits = 1 + input.Below(6);
                Digits(scaled, wholeDigits, 1 + input.Below(4));
                break;
            }
            default:
                FileTime(component, input.Real());
                break;
        }
    }
}

}  // namespace
}  // namespace kwo::frame
