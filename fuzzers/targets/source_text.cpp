// The bytes of a script are decoded or refused with a reason. What is decoded has Windows line ends and no null, and
// written as UTF-8 or UTF-16 it is read as the same.

#include "source_text.h"

#include <algorithm>

#include "platform/simulated/text_codec.h"
#include "platform/utf8.h"
#include "target.h"

namespace kwohost {
namespace {

std::string AsUtf16(std::u16string_view text) {
    std::string bytes = "\xFF\xFE";
    for (const char16_t unit : text) {
        bytes += static_cast<char>(unit & 0xFF);
        bytes += static_cast<char>(unit >> 8);
    }
    return bytes;
}

/// The line ends are all CR LF.
bool HasWindowsLineEnds(std::u16string_view text) {
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (text[at] == u'\n' && (at == 0 || text[at - 1] != u'\r')) return false;
        if (text[at] == u'\r' && text.substr(at + 1, 1) != u"\n") return false;
    }
    return true;
}

std::string WithoutLineEnds(std::string bytes) {
    std::erase_if(bytes, [](char c) { return c == '\r' || c == '\n'; });
    return bytes;
}

KWO_FUZZ_TARGET(source_text) {
    const std::string_view bytes = input.Rest();
    std::u16string text;
    try {
        text = DecodeSource(bytes);
    } catch (const UndecodableSource& cause) {
        KWO_HOLDS(cause.reason.starts_with(u"the file "));
        const bool isAscii = std::ranges::all_of(bytes, [](char c) { return c > 0; });
        KWO_HOLDS(!isAscii);
        return;
    }
    KWO_HOLDS(text.find(u'\0') == std::u16string::npos);
    KWO_HOLDS(HasWindowsLineEnds(text));
    KWO_HOLDS(DecodeSource(AsUtf16(text)) == text);

    const std::string utf8 = kwo::platform::simulated::ToUtf8(text);
    std::u16string again;
    // UTF-16 may have halves of characters, which UTF-8 has not.
    if (!kwo::platform::FromUtf8(utf8, again) || again != text) {
        KWO_HOLDS(bytes.starts_with("\xFF\xFE") || bytes[1] == '\0');
        return;
    }
    KWO_HOLDS(DecodeSource("\xEF\xBB\xBF" + utf8) == text);
    const bool wasUtf16 = bytes.starts_with("\xFF\xFE") || (bytes.size() > 1 && bytes[1] == '\0');
    if (wasUtf16) return;
    const std::string_view plain = bytes.starts_with("\xEF\xBB\xBF") ? bytes.substr(3) : bytes;
    KWO_HOLDS(WithoutLineEnds(std::string(plain)) == WithoutLineEnds(utf8));
}

}  // namespace
}  // namespace kwohost
