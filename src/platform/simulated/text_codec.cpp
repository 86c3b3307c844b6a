#include "platform/simulated/text_codec.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <functional>
#include <numeric>

#include "platform/utf8.h"

namespace kwo::platform::simulated {
namespace {

// Windows-1252 differs from Latin-1 in the bytes 0x80 to 0x9F only.
constexpr std::size_t kFirstOwn = 0x80;
constexpr std::array<char16_t, 32> kOwn = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,  //
    0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,  //
    0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,  //
    0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178,
};

char ToAnsi(char16_t c) {
    if (c < kFirstOwn || (c >= kFirstOwn + kOwn.size() && c <= 0xFF)) return static_cast<char>(c);
    const auto found = std::find(kOwn.begin(), kOwn.end(), c);
    if (found == kOwn.end()) return '?';
    return static_cast<char>(kFirstOwn + static_cast<std::size_t>(found - kOwn.begin()));
}

char16_t FromAnsi(char c) {
    const auto byte = static_cast<unsigned char>(c);
    if (byte < kFirstOwn || byte >= kFirstOwn + kOwn.size()) return byte;
    return kOwn[byte - kFirstOwn];
}

void AppendUtf8(std::string& bytes, std::uint32_t code) {
    const auto tail = [&](unsigned shift) { bytes += static_cast<char>(0x80 | ((code >> shift) & 0x3F)); };
    if (code < 0x80) {
        bytes += static_cast<char>(code);
    } else if (code < 0x800) {
        bytes += static_cast<char>(0xC0 | (code >> 6));
        tail(0);
    } else if (code < 0x10000) {
        bytes += static_cast<char>(0xE0 | (code >> 12));
        tail(6);
        tail(0);
    } else {
        bytes += static_cast<char>(0xF0 | (code >> 18));
        tail(12);
        tail(6);
        tail(0);
    }
}

bool IsHighSurrogate(char16_t c) {
    return c >= 0xD800 && c <= 0xDBFF;
}
bool IsLowSurrogate(char16_t c) {
    return c >= 0xDC00 && c <= 0xDFFF;
}

template <class String, class View>
String FoldedAs(View name) {
    String folded(name);
    for (auto& c : folded) {
        if (c >= 'A' && c <= 'Z') c = static_cast<std::remove_reference_t<decltype(c)>>(c - 'A' + 'a');
    }
    return folded;
}

}  // namespace

std::string ToAnsi(TextView text) {
    std::string bytes(text.size(), '\0');
    const auto all = std::accumulate(text.begin(), text.end(), 0u, std::bit_or<unsigned>());
    if (all < kFirstOwn) {
        std::transform(text.begin(), text.end(), bytes.begin(), [](char16_t c) { return static_cast<char>(c); });
    } else {
        std::transform(text.begin(), text.end(), bytes.begin(), [](char16_t c) { return ToAnsi(c); });
    }
    return bytes;
}

Text FromAnsi(std::string_view bytes) {
    Text text;
    text.reserve(bytes.size());
    for (const char c : bytes)
        text += FromAnsi(c);
    return text;
}

std::string ToAnsi(TextView text, CodePage page) {
    return page == CodePage::Utf8 ? ToUtf8(text) : ToAnsi(text);
}

Text FromAnsi(std::string_view bytes, CodePage page) {
    return page == CodePage::Utf8 ? FromUtf8(bytes) : FromAnsi(bytes);
}

std::string AnsiArgument(TextView text) {
    return ToAnsi(UpToZero(text));
}

Text ThroughAnsi(TextView text) {
    return FromAnsi(AnsiArgument(text));
}

TextView UpToZero(TextView text) {
    return text.substr(0, text.find(u'\0'));
}

std::string ToUtf8(TextView text) {
    std::string bytes;
    for (std::size_t i = 0; i < text.size(); ++i) {
        std::uint32_t code = text[i];
        if (IsHighSurrogate(text[i]) && i + 1 < text.size() && IsLowSurrogate(text[i + 1])) {
            code = 0x10000 + ((code - 0xD800) << 10) + (static_cast<std::uint32_t>(text[++i]) - 0xDC00);
        }
        AppendUtf8(bytes, code);
    }
    return bytes;
}

Text FromUtf8(std::string_view bytes) {
    constexpr std::size_t kLongest = 4;
    constexpr char16_t kReplacement = 0xFFFD;
    Text text;
    if (platform::FromUtf8(bytes, text)) return text;
    text.clear();
    while (!bytes.empty()) {
        Text character;
        std::size_t length = 1;
        while (length < kLongest && !platform::FromUtf8(bytes.substr(0, length), character))
            ++length;
        const bool isCharacter = platform::FromUtf8(bytes.substr(0, length), character);
        text += isCharacter ? character : Text(1, kReplacement);
        bytes.remove_prefix(isCharacter ? std::min(length, bytes.size()) : 1);
    }
    return text;
}

std::string Folded(std::string_view name) {
    return FoldedAs<std::string>(name);
}
Text Folded(TextView name) {
    return FoldedAs<Text>(name);
}

}  // namespace kwo::platform::simulated
