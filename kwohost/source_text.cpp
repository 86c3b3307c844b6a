#include "source_text.h"

#include <algorithm>

#include "platform/utf8.h"

namespace kwohost {

namespace {

using namespace std::string_view_literals;

constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF"sv;
constexpr std::string_view kUtf16Mark = "\xFF\xFE"sv;
constexpr std::string_view kSwappedUtf16Mark = "\xFE\xFF"sv;

std::u16string FromUtf16(std::string_view bytes) {
    if (bytes.size() % 2 != 0) throw UndecodableSource{u"the file is UTF-16 with half a character at its end"};
    std::u16string text;
    text.reserve(bytes.size() / 2);
    for (std::size_t at = 0; at < bytes.size(); at += 2) {
        const unsigned low = static_cast<unsigned char>(bytes[at]);
        const unsigned high = static_cast<unsigned char>(bytes[at + 1]);
        text += static_cast<char16_t>(high << 8 | low);
    }
    return text;
}

std::u16string FromUtf8(std::string_view bytes) {
    std::u16string text;
    if (!kwo::platform::FromUtf8(bytes, text))
        throw UndecodableSource{u"the file is neither UTF-8 nor UTF-16; save it in one of them"};
    return text;
}

/// A script starts with a character of ASCII, so a zero byte behind it is the other half of a UTF-16 character.
bool LooksLikeUtf16(std::string_view bytes) {
    return bytes.size() >= 2 && bytes[0] != '\0' && bytes[1] == '\0';
}

std::u16string WithWindowsLineEnds(std::u16string_view text) {
    std::u16string result;
    result.reserve(text.size() + text.size() / 32);
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == u'\r' || text[i] == u'\n') {
            if (text[i] == u'\r' && i + 1 < text.size() && text[i + 1] == u'\n') ++i;
            result += u"\r\n";
        } else {
            result += text[i];
        }
    }
    return result;
}

}  // namespace

std::u16string DecodeSource(std::string_view bytes) {
    if (bytes.starts_with(kSwappedUtf16Mark))
        throw UndecodableSource{u"the file is UTF-16 with the high byte first; save it as UTF-8"};
    std::u16string text;
    if (bytes.starts_with(kUtf16Mark))
        text = FromUtf16(bytes.substr(kUtf16Mark.size()));
    else if (bytes.starts_with(kUtf8Mark))
        text = FromUtf8(bytes.substr(kUtf8Mark.size()));
    else
        text = LooksLikeUtf16(bytes) ? FromUtf16(bytes) : FromUtf8(bytes);
    // The engines take text that ends at the first null: without this check the rest would be dropped silently.
    const auto null = text.find(u'\0');
    if (null != std::u16string::npos) {
        const std::u16string before = WithWindowsLineEnds(std::u16string_view(text).substr(0, null));
        const std::string line = std::to_string(std::count(before.begin(), before.end(), u'\n') + 1);
        throw UndecodableSource{u"the file has a null character in line " + std::u16string(line.begin(), line.end())};
    }
    return WithWindowsLineEnds(text);
}

}  // namespace kwohost
