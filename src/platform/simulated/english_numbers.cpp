#include "platform/simulated/english_numbers.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <string>

namespace kwo::platform::simulated {
namespace {

constexpr int kShownDigits = 15;  // what a double shows

bool IsBlank(char16_t c) {
    return c == u' ' || (c >= u'\t' && c <= u'\r');
}

TextView WithoutBlanks(TextView text) {
    while (!text.empty() && IsBlank(text.front()))
        text.remove_prefix(1);
    while (!text.empty() && IsBlank(text.back()))
        text.remove_suffix(1);
    return text;
}

std::optional<ParsedNumber> ParsePattern(TextView digits, unsigned base) {
    std::uint64_t bits = 0;
    if (digits.empty()) return std::nullopt;
    for (const char16_t c : digits) {
        unsigned digit = 16;
        if (IsDigit(c)) digit = static_cast<unsigned>(c - u'0');
        if (c >= u'a' && c <= u'f') digit = static_cast<unsigned>(c - u'a') + 10;
        if (c >= u'A' && c <= u'F') digit = static_cast<unsigned>(c - u'A') + 10;
        if (digit >= base) return std::nullopt;
        if (bits > (UINT64_MAX - digit) / base) return ParsedNumber{0, true, true};
        bits = bits * base + digit;
    }
    return ParsedNumber{static_cast<double>(bits), false, true};
}

/// Removes signs, brackets, blanks and dollar signs from both ends; nothing if they contradict each other.
struct Stripped {
    TextView digits;
    bool negative = false;
};
std::optional<Stripped> Strip(TextView text) {
    Stripped stripped;
    bool sign = false;
    bool dollar = false;
    bool bracket = false;
    while (!text.empty()) {
        const char16_t c = text.front();
        if ((c == u'+' || c == u'-') && !sign && !bracket) {
            sign = true;
            stripped.negative = c == u'-';
        } else if (c == u'$' && !dollar) {
            dollar = true;
        } else if (c == u'(' && !bracket && !sign) {
            bracket = true;
            stripped.negative = true;
        } else if (!IsBlank(c)) {
            break;
        }
        text.remove_prefix(1);
    }
    bool closed = false;
    while (!text.empty()) {
        const char16_t c = text.back();
        if ((c == u'+' || c == u'-') && !sign && !bracket) {
            sign = true;
            stripped.negative = c == u'-';
        } else if (c == u')' && bracket && !closed) {
            closed = true;
        } else if (!IsBlank(c)) {
            break;
        }
        text.remove_suffix(1);
    }
    if (bracket != closed) return std::nullopt;
    stripped.digits = text;
    return stripped;
}

/// The digits as the C library reads them; empty if they are not a number.
std::string PlainDigits(TextView text) {
    std::string plain;
    std::size_t i = 0;
    bool digits = false;
    for (; i < text.size() && (IsDigit(text[i]) || (text[i] == u',' && digits)); ++i) {
        if (text[i] == u',') continue;
        plain += static_cast<char>(text[i]);
        digits = true;
    }
    if (i < text.size() && text[i] == u'.') {
        plain += '.';
        for (++i; i < text.size() && IsDigit(text[i]); ++i) {
            plain += static_cast<char>(text[i]);
            digits = true;
        }
    }
    if (!digits) return {};
    if (i < text.size() && TextView(u"eEdD").find(text[i]) != TextView::npos) {
        plain += 'e';
        ++i;
        if (i < text.size() && (text[i] == u'+' || text[i] == u'-')) {
            if (text[i] == u'-') plain += '-';
            ++i;
        }
        if (i == text.size()) return {};
        for (; i < text.size() && IsDigit(text[i]); ++i)
            plain += static_cast<char>(text[i]);
    }
    return i == text.size() ? plain : std::string();
}

/// A number's significant decimal digits and where its point stands, as it shows them.
struct Decimal {
    std::string digits;  ///< without the point
    int whole = 0;       ///< how many of them stand before it; may be negative
};

Decimal DecimalOf(double magnitude) {
    std::array<char, 64> buffer;
    const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), magnitude,
                                   std::chars_format::scientific, kShownDigits - 1)
                         .ptr;
    const std::string shown(buffer.data(), end);
    const std::size_t e = shown.find('e');
    Decimal decimal{shown.substr(0, 1) + shown.substr(2, e - 2), std::stoi(shown.substr(e + 1)) + 1};
    return decimal;
}

/// Rounds to `places` digits after the point, a half away from zero.
void Round(Decimal& decimal, int places) {
    const int keep = decimal.whole + places;
    if (keep < 0) {
        decimal = {"", 0};
        return;
    }
    if (keep >= static_cast<int>(decimal.digits.size())) return;
    const bool up = decimal.digits[static_cast<std::size_t>(keep)] >= '5';
    decimal.digits.resize(static_cast<std::size_t>(keep));
    if (!up) return;
    auto digit = decimal.digits.rbegin();
    while (digit != decimal.digits.rend() && *digit == '9')
        *digit++ = '0';
    if (digit != decimal.digits.rend()) {
        ++*digit;
    } else {
        decimal.digits.insert(decimal.digits.begin(), '1');
        ++decimal.whole;
    }
}

struct NumberPattern {
    TextView before;
    TextView behind;
    int wholeZeros = 0;
    int places = 0;      ///< digits behind the point at most
    int placeZeros = 0;  ///< and at least
    bool takesDigits = false;
    bool point = false;
    bool thousands = false;
};

NumberPattern ReadPattern(TextView text) {
    constexpr TextView kPlaces = u"0#,.";
    NumberPattern pattern;
    const std::size_t first = text.find_first_of(kPlaces);
    if (first == TextView::npos) return pattern;
    const std::size_t last = text.find_last_of(kPlaces);
    pattern.takesDigits = true;
    pattern.before = text.substr(0, first);
    pattern.behind = text.substr(last + 1);
    for (const char16_t c : text.substr(first, last - first + 1)) {
        if (c == u'.') pattern.point = true;
        if (c == u',' && !pattern.point) pattern.thousands = true;
        if (c == u'0' && !pattern.point) ++pattern.wholeZeros;
        if (c == u'#' && !pattern.point && pattern.wholeZeros > 0) ++pattern.wholeZeros;
        if ((c == u'0' || c == u'#') && pattern.point) ++pattern.places;
        if (c == u'0' && pattern.point) pattern.placeZeros = pattern.places;
    }
    return pattern;
}

std::string WholePart(const Decimal& decimal, const NumberPattern& pattern) {
    std::string whole;
    for (int i = 0; i < decimal.whole; ++i) {
        const auto at = static_cast<std::size_t>(i);
        whole += at < decimal.digits.size() ? decimal.digits[at] : '0';
    }
    whole.erase(0, std::min(whole.find_first_not_of('0'), whole.size()));
    const auto least = static_cast<std::size_t>(pattern.wholeZeros);
    if (whole.size() < least) whole.insert(0, least - whole.size(), '0');
    if (pattern.thousands) {
        for (std::size_t at = whole.size(); at > 3; at -= 3)
            whole.insert(at - 3, ",");
    }
    return whole;
}

std::string Fraction(const Decimal& decimal, const NumberPattern& pattern) {
    std::string fraction;
    for (int i = decimal.whole; i < decimal.whole + pattern.places; ++i) {
        const bool known = i >= 0 && i < static_cast<int>(decimal.digits.size());
        fraction += known ? decimal.digits[static_cast<std::size_t>(i)] : '0';
    }
    while (fraction.size() > static_cast<std::size_t>(pattern.placeZeros) && fraction.back() == '0')
        fraction.pop_back();
    return fraction;
}

}  // namespace

std::optional<ParsedNumber> ParseNumber(TextView text) {
    const TextView trimmed = WithoutBlanks(text);
    if (trimmed.size() > 1 && trimmed[0] == u'&') {
        const char16_t base = trimmed[1];
        if (base == u'h' || base == u'H') return ParsePattern(trimmed.substr(2), 16);
        if (base == u'o' || base == u'O') return ParsePattern(trimmed.substr(2), 8);
        return std::nullopt;
    }
    const auto stripped = Strip(trimmed);
    if (!stripped) return std::nullopt;
    const std::string plain = PlainDigits(stripped->digits);
    if (plain.empty()) return std::nullopt;
    ParsedNumber number;
    const auto result = std::from_chars(plain.data(), plain.data() + plain.size(), number.value);
    if (result.ec == std::errc::result_out_of_range) {
        // Both ends of the range report the same; a number too small to hold is zero.
        const std::size_t e = plain.find('e');
        number.tooLarge = e == std::string::npos || plain[e + 1] != '-';
        number.value = 0;
    }
    if (stripped->negative) number.value = -number.value;
    return number;
}

Text NumberText(double value, int digits) {
    if (value == 0) return u"0";
    std::array<char, 64> buffer;
    const auto end =
        std::to_chars(buffer.data(), buffer.data() + buffer.size(), value, std::chars_format::general, digits).ptr;
    Text text(buffer.data(), end);
    std::replace(text.begin(), text.end(), u'e', u'E');
    return text;
}

Text FormattedNumber(double value, TextView patternText) {
    const NumberPattern pattern = ReadPattern(patternText);
    if (!pattern.takesDigits) return Text(patternText);
    Decimal decimal = DecimalOf(std::fabs(value));
    Round(decimal, pattern.places);
    const std::string whole = WholePart(decimal, pattern);
    const std::string fraction = Fraction(decimal, pattern);
    const bool zero = (whole + fraction).find_first_of("123456789") == std::string::npos;
    Text text;
    if (value < 0 && !zero) text += u'-';
    text += pattern.before;
    text.append(whole.begin(), whole.end());
    if (pattern.point) text += u'.';
    text.append(fraction.begin(), fraction.end());
    text += pattern.behind;
    return text;
}

}  // namespace kwo::platform::simulated
