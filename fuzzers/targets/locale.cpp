// Settings of any content, also from calls that fail: each is read as the rules say, and reading them raises nothing.

#include "messages/locale.h"

#include <optional>
#include <string>

#include "component/component.h"
#include "platform/simulated/simulated_desktop.h"
#include "platform/simulated/text_codec.h"
#include "target.h"

namespace kwo::messages {
namespace {

constexpr std::uint32_t kSettings[] = {1, 14, 15, 17, 18, 25, 28, 30, 35, 49, 50, 51, 52, 53, 54, 55, 4108, 4112};

/// A setting as it has to be read, with room for `capacity` characters and their end.
Text Expected(const std::map<std::uint32_t, Text>& settings, std::uint32_t type, std::size_t capacity) {
    const auto found = settings.find(type);
    if (found == settings.end() || found->second.size() >= capacity) return {};
    Text text = platform::simulated::ThroughAnsi(found->second);
    text = text.substr(0, text.find(u'\0'));
    while (!text.empty() && text.back() == u' ')
        text.pop_back();
    while (!text.empty() && text.front() == u' ')
        text.erase(text.begin());
    return text;
}

std::int32_t ExpectedNumber(const Text& text) {
    std::size_t at = !text.empty() && (text[0] == u'-' || text[0] == u'+') ? 1 : 0;
    const bool isNegative = text.starts_with(u'-');
    std::int32_t number = 0;
    for (; at < text.size(); ++at) {
        if (text[at] < u'0' || text[at] > u'9') return 0;
        number = number * 10 + (text[at] - u'0');
    }
    return isNegative ? -number : number;
}

std::int32_t ExpectedLanguage(const Text& text) {
    std::uint64_t language = 0;
    for (const char16_t c : text) {
        const std::string digits = "0123456789abcdefABCDEF";
        const std::size_t place = c < 128 ? digits.find(static_cast<char>(c)) : std::string::npos;
        if (place == std::string::npos) return 0;
        language = language * 16 + (place < 16 ? place : place - 6);
        if (language > 0xFFFFFFFF) return 0;
    }
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(language));
}

KWO_FUZZ_TARGET(locale) {
    platform::simulated::SimulatedDesktop desktop;
    component::Component component(desktop.Services());
    for (const std::uint32_t type : kSettings) {
        switch (input.Below(4)) {
            case 0:
                break;
            case 1:
                desktop.locale.settings.erase(type);
                break;
            default:
                desktop.locale.settings[type] = input.Text();
                break;
        }
    }
    desktop.locale.zone.bias = input.Whole<std::int32_t>();
    desktop.locale.zone.standardName = input.Text();
    desktop.locale.zoneId = input.Whole<std::uint32_t>();
    const bool fails = input.Once(4);
    if (fails) {
        desktop.FailCall("GetLocaleInfo", 1 + input.Below(18), 87);
        if (input.Flag()) desktop.FailCall("GetTimeZoneInformation", 1, 87);
    }

    component.locale.KWOLocaleInit();
    KWO_HOLDS(component.locale.LocaleLoaded());
    const LocaleRecord record = component.locale.Record();
    KWO_HOLDS(record.primaryLanguage == (record.language & 0x3FF));
    KWO_HOLDS(record.subLanguage == record.language / 1024);
    KWO_HOLDS(desktop.log.Starting("GetLocaleInfo").size() == std::size(kSettings));
    component.locale.KWOLocaleInit();
    KWO_HOLDS(desktop.log.Starting("GetLocaleInfo").size() == std::size(kSettings));
    if (fails) return;

    const auto expected = [&](std::uint32_t type, std::size_t capacity) {
        return Expected(desktop.locale.settings, type, capacity);
    };
    KWO_HOLDS(record.language == ExpectedLanguage(expected(1, 32)));
    KWO_HOLDS(record.has24Hours == expected(35, 32).starts_with(u"1"));
    KWO_HOLDS(record.timeSeparator == expected(30, 32));
    KWO_HOLDS(record.thousandSeparator == expected(15, 32));
    KWO_HOLDS(record.decimalSeparator == expected(14, 2));
    KWO_HOLDS(record.digits == ExpectedNumber(expected(17, 3)));
    KWO_HOLDS(record.currencyDigits == ExpectedNumber(expected(25, 3)));
    KWO_HOLDS(record.leadingZero == (ExpectedNumber(expected(18, 2)) != 0));
    KWO_HOLDS(record.negativeNumber == ExpectedNumber(expected(4112, 2)));
    KWO_HOLDS(record.negativeCurrency == ExpectedNumber(expected(28, 3)));
    KWO_HOLDS(record.firstDayOfWeek == ExpectedNumber(expected(4108, 4)));
    for (std::uint32_t day = 0; day < 7; ++day)
        KWO_HOLDS(record.dayNames[day] == expected(49 + day, 4));
    KWO_HOLDS(component.locale.TimeZoneId() == desktop.locale.zoneId);
    KWO_HOLDS(component.locale.TimeZoneInfo().bias == desktop.locale.zone.bias);
}

}  // namespace
}  // namespace kwo::messages
