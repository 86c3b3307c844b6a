#include "kwoinit/message_line.h"

#include <algorithm>
#include <optional>

namespace kwo::kwoinit {

namespace {

bool IsBlank(char16_t c) {
    return c == u' ' || c == u'\t';
}
bool IsDigit(char16_t c) {
    return c >= u'0' && c <= u'9';
}

TextView Trimmed(TextView text) {
    while (!text.empty() && IsBlank(text.front()))
        text.remove_prefix(1);
    while (!text.empty() && IsBlank(text.back()))
        text.remove_suffix(1);
    return text;
}

std::optional<std::uint16_t> Language(TextView digits) {
    if (digits.size() != 4) return std::nullopt;
    unsigned language = 0;
    for (const char16_t c : digits) {
        if (IsDigit(c)) {
            language = language * 16 + (c - u'0');
        } else if ((c | 0x20) >= u'a' && (c | 0x20) <= u'f') {
            language = language * 16 + ((c | 0x20) - u'a' + 10u);
        } else {
            return std::nullopt;
        }
    }
    if (language == 0) return std::nullopt;
    return static_cast<std::uint16_t>(language);
}

Line ParseHeader(TextView line) {
    const bool quoted = Trimmed(line.substr(1)).starts_with(u'"');
    const std::size_t firstQuote = line.find(u'"');
    const std::size_t lastQuote = quoted ? line.find(u'"', firstQuote + 1) : 0;
    if (lastQuote == TextView::npos) return BadLine{u"the program's name has no closing quotation mark"};
    const std::size_t end = line.find(u']', lastQuote);
    if (end == TextView::npos) return BadLine{u"the section header has no closing bracket"};

    TextView program = Trimmed(line.substr(1, end - 1));
    TextView language;
    if (quoted) {
        program = line.substr(firstQuote + 1, lastQuote - firstQuote - 1);
        language = Trimmed(line.substr(lastQuote + 1, end - lastQuote - 1));
    } else if (const std::size_t blank = program.find_last_of(u" \t");
               blank != TextView::npos && IsDigit(program[blank + 1])) {
        language = program.substr(blank + 1);
        program = Trimmed(program.substr(0, blank));
    }
    if (program.empty()) return BadLine{u"the section header names no program"};
    if (language.empty()) return SectionLine{Text(program), 0};
    const auto identifier = Language(language);
    if (!identifier) return BadLine{u"the language identifier is not of four hexadecimal digits"};
    return SectionLine{Text(program), *identifier};
}

/// The text with its escapes replaced. Nothing if an escape means nothing in its place.
std::optional<Text> WithoutEscapes(TextView text) {
    std::size_t inner = 0;
    std::size_t end = text.size();
    while (text.substr(inner).starts_with(u"\\s"))
        inner += 2;
    // "\s" at the end is a blank only if its backslash is not the second of two.
    const auto isBlankAt = [&](std::size_t at) {
        const std::size_t before = text.substr(0, at).find_last_not_of(u'\\');
        const std::size_t slashes = at - (before == TextView::npos ? 0 : before + 1);
        return text.substr(at, 2) == u"\\s" && slashes % 2 == 0;
    };
    while (end >= inner + 2 && isBlankAt(end - 2))
        end -= 2;

    Text plain(inner / 2, u' ');
    for (std::size_t at = inner; at < end; ++at) {
        if (text[at] != u'\\') {
            plain += text[at];
            continue;
        }
        if (++at == end) return std::nullopt;
        if (text[at] == u'n') {
            plain += u"\r\n";
        } else if (text[at] == u'\\') {
            plain += u'\\';
        } else {
            return std::nullopt;
        }
    }
    plain.append((text.size() - end) / 2, u' ');
    return plain;
}

Line ParseText(TextView line) {
    const std::size_t sign = line.find(u'=');
    if (sign == TextView::npos) return BadLine{u"there is no equals sign after a number"};
    const TextView digits = Trimmed(line.substr(0, sign));
    if (digits.empty() || !std::ranges::all_of(digits, IsDigit)) return BadLine{u"there is no number"};
    std::int64_t number = 0;
    for (const char16_t digit : digits) {
        number = std::min<std::int64_t>(number * 10 + (digit - u'0'), kHighestNumber + 1);
    }
    if (number < 1 || number > kHighestNumber) return BadLine{u"the number is not within 1 and 99999999"};
    const TextView text = Trimmed(line.substr(sign + 1));
    if (text.empty()) return BadLine{u"there is no text after the number"};
    auto plain = WithoutEscapes(text);
    if (!plain) return BadLine{u"after a backslash only n, another backslash or, at an end of the text, s may stand"};
    return TextLine{static_cast<std::int32_t>(number), std::move(*plain)};
}

}  // namespace

Line ParseLine(TextView line) {
    line = Trimmed(line);
    if (line.empty() || line.front() == u';') return NothingLine{};
    return line.front() == u'[' ? ParseHeader(line) : ParseText(line);
}

}  // namespace kwo::kwoinit
