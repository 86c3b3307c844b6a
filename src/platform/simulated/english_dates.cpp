#include "platform/simulated/english_dates.h"

#include <algorithm>
#include <array>
#include <stdexcept>
#include <vector>

#include "platform/simulated/calendar.h"
#include "platform/simulated/english_numbers.h"
#include "platform/simulated/text_codec.h"

namespace kwo::platform::simulated {
namespace {

constexpr std::array<TextView, 12> kMonths = {u"January",   u"February", u"March",    u"April",
                                              u"May",       u"June",     u"July",     u"August",
                                              u"September", u"October",  u"November", u"December"};
constexpr std::array<TextView, 7> kDays = {u"Sunday",   u"Monday", u"Tuesday", u"Wednesday",
                                           u"Thursday", u"Friday", u"Saturday"};
constexpr std::size_t kAbbreviated = 3;

bool IsSmallLetter(char16_t c) {
    return c >= u'a' && c <= u'z';
}

Text Padded(unsigned number, std::size_t width) {
    Text digits;
    for (; number > 0 || digits.empty(); number /= 10)
        digits.insert(digits.begin(), static_cast<char16_t>(u'0' + number % 10));
    if (digits.size() < width) digits.insert(0, width - digits.size(), u'0');
    return digits;
}

std::vector<Text> Words(TextView text) {
    std::vector<Text> words(1);
    for (const char16_t c : text) {
        if (c != u' ' && c != u'\t') {
            words.back() += c;
        } else if (!words.back().empty()) {
            words.emplace_back();
        }
    }
    if (words.back().empty()) words.pop_back();
    return words;
}

/// The whole word as numbers between separators: "1/2/2026" is 1, 2, 2026. Empty when it is anything else.
struct Numbers {
    std::vector<unsigned> values;
    std::vector<std::size_t> widths;
};
Numbers Split(TextView word, char16_t separator) {
    Numbers numbers;
    for (std::size_t start = 0; start <= word.size();) {
        const std::size_t end = std::min(word.find(separator, start), word.size());
        const TextView digits = word.substr(start, end - start);
        if (digits.empty() || digits.size() > 4 || !std::all_of(digits.begin(), digits.end(), IsDigit)) return {};
        unsigned value = 0;
        for (const char16_t c : digits)
            value = value * 10 + static_cast<unsigned>(c - u'0');
        numbers.values.push_back(value);
        numbers.widths.push_back(digits.size());
        start = end + 1;
    }
    return numbers;
}

std::int32_t FullYear(unsigned year, std::size_t width) {
    if (width > 2) return static_cast<std::int32_t>(year);
    return static_cast<std::int32_t>(year < 30 ? 2000 + year : 1900 + year);
}

std::optional<double> ParseDay(TextView word) {
    Numbers numbers = Split(word, word.find(u'/') != TextView::npos ? u'/' : u'-');
    if (numbers.values.size() != 3) return std::nullopt;
    auto [a, b, c] = std::array{numbers.values[0], numbers.values[1], numbers.values[2]};
    if (numbers.widths[0] > 2) return DayNumber(static_cast<std::int32_t>(a), b, c);
    if (numbers.widths[1] > 2) return std::nullopt;
    const std::int32_t year = FullYear(c, numbers.widths[2]);
    // A first number that cannot be a month is the day.
    return a > 12 ? DayNumber(year, b, a) : DayNumber(year, a, b);
}

enum class Half { None, Am, Pm };

std::optional<Half> ParseHalf(TextView word) {
    const Text folded = Folded(word);
    if (folded == u"am" || folded == u"a") return Half::Am;
    if (folded == u"pm" || folded == u"p") return Half::Pm;
    return std::nullopt;
}

std::optional<double> ParseTime(TextView word, Half half) {
    const Numbers numbers = Split(word, u':');
    const std::size_t count = numbers.values.size();
    if (count == 0 || count > 3 || (count == 1 && half == Half::None)) return std::nullopt;
    unsigned hour = numbers.values[0];
    const unsigned minute = count > 1 ? numbers.values[1] : 0;
    const unsigned second = count > 2 ? numbers.values[2] : 0;
    if (hour > (half == Half::None ? 23u : 12u) || minute > 59 || second > 59) return std::nullopt;
    if (half == Half::Am && hour == 12) hour = 0;
    if (half == Half::Pm && hour < 12) hour += 12;
    return (hour * 3600 + minute * 60 + second) / 86'400.0;
}

/// Removes AM or PM from the end of the words, where it stands alone or after a digit.
Half TakeHalf(std::vector<Text>& words) {
    if (words.empty()) return Half::None;
    if (const auto half = ParseHalf(words.back())) {
        words.pop_back();
        return *half;
    }
    const std::size_t letters = words.back().find_first_not_of(u"0123456789:");
    if (letters == Text::npos || letters == 0) return Half::None;
    const auto half = ParseHalf(TextView(words.back()).substr(letters));
    if (!half) return Half::None;
    words.back().resize(letters);
    return *half;
}

unsigned TwelveHours(unsigned hour) {
    return hour % 12 == 0 ? 12 : hour % 12;
}

/// One run of the same letter.
Text Piece(const Moment& moment, char16_t letter, std::size_t length, bool twelveHours) {
    switch (letter) {
        case u'd':
            if (length <= 2) return Padded(moment.day, length);
            if (length <= 4) return Text(kDays[moment.weekday].substr(0, length == 3 ? kAbbreviated : TextView::npos));
            break;
        case u'm':
            if (length <= 2) return Padded(moment.month, length);
            if (length <= 4)
                return Text(kMonths[moment.month - 1].substr(0, length == 3 ? kAbbreviated : TextView::npos));
            break;
        case u'y':
            if (length == 2) return Padded(static_cast<unsigned>(moment.year) % 100, 2);
            if (length == 4) return Padded(static_cast<unsigned>(moment.year), 4);
            break;
        case u'h':
            if (length <= 2) return Padded(twelveHours ? TwelveHours(moment.hour) : moment.hour, length);
            break;
        case u'n':
            if (length <= 2) return Padded(moment.minute, length);
            break;
        case u's':
            if (length <= 2) return Padded(moment.second, length);
            break;
        default:
            break;
    }
    throw std::invalid_argument("no such date format here: " + std::string(length, static_cast<char>(letter)));
}

}  // namespace

std::optional<Date> ParseEnglishDate(TextView text) {
    std::vector<Text> words = Words(text);
    const Half half = TakeHalf(words);
    if (words.empty() || words.size() > 2) return std::nullopt;
    if (words.size() == 1) {
        if (const auto time = ParseTime(words[0], half)) return Date{*time};
        const auto day = ParseDay(words[0]);
        if (!day || half != Half::None) return std::nullopt;
        return Date{*day};
    }
    const auto day = ParseDay(words[0]);
    const auto time = ParseTime(words[1], half);
    if (!day || !time) return std::nullopt;
    return Joined(*day, *time);
}

Text DateText(Date date) {
    const Moment moment = MomentOf(date);
    const bool hasTime = moment.hour != 0 || moment.minute != 0 || moment.second != 0;
    const bool hasDay = MomentOf({0}).year != moment.year || moment.month != 12 || moment.day != 30;
    Text text;
    if (hasDay) text = FormattedDate(date, u"m/d/yyyy");
    if (hasDay && hasTime) text += u' ';
    if (hasTime || !hasDay) text += FormattedDate(date, u"h:nn:ss AM/PM");
    return text;
}

Text FormattedDate(Date date, TextView pattern) {
    constexpr TextView kHalves = u"am/pm";
    const Text folded = Folded(pattern);
    if (folded == u"short date") return FormattedDate(date, u"m/d/yyyy");
    if (folded == u"long date") return FormattedDate(date, u"dddd, mmmm d, yyyy");
    const Moment moment = MomentOf(date);
    const bool twelveHours = folded.find(kHalves) != Text::npos;
    Text text;
    char16_t lastLetter = 0;
    for (std::size_t i = 0; i < folded.size();) {
        if (folded.compare(i, kHalves.size(), kHalves) == 0) {
            text += moment.hour < 12 ? u"AM" : u"PM";
            i += kHalves.size();
        } else if (!IsSmallLetter(folded[i])) {
            text += pattern[i++];
        } else {
            const std::size_t end = std::min(folded.find_first_not_of(folded[i], i), folded.size());
            const char16_t letter = folded[i] == u'm' && lastLetter == u'h' ? u'n' : folded[i];
            text += Piece(moment, letter, end - i, twelveHours);
            lastLetter = letter;
            i = end;
        }
    }
    return text;
}

}  // namespace kwo::platform::simulated
