#include "platform/utf8.h"

#include <cstddef>
#include <cstdint>

namespace kwo::platform {

namespace {

constexpr std::uint32_t kNone = 0xFFFFFFFF;

struct Form {
    unsigned char mask;  ///< the bits of the first byte that say the form
    unsigned char lead;
    std::size_t length;
    std::uint32_t lowest;  ///< what is below has a shorter form
};
constexpr Form kForms[] = {
    {0x80, 0x00, 1, 0x0}, {0xE0, 0xC0, 2, 0x80}, {0xF0, 0xE0, 3, 0x800}, {0xF8, 0xF0, 4, 0x10000}};

/// Removes the first character and returns it; kNone if there is none.
std::uint32_t Next(std::string_view& bytes) {
    const auto first = static_cast<unsigned char>(bytes[0]);
    for (const Form& form : kForms) {
        if ((first & form.mask) != form.lead) continue;
        if (bytes.size() < form.length) return kNone;
        std::uint32_t character = first & ~static_cast<std::uint32_t>(form.mask);
        for (std::size_t at = 1; at < form.length; ++at) {
            const auto more = static_cast<unsigned char>(bytes[at]);
            if ((more & 0xC0) != 0x80) return kNone;
            character = character << 6 | (more & 0x3Fu);
        }
        const bool isSurrogate = character >= 0xD800 && character <= 0xDFFF;
        if (character < form.lowest || isSurrogate || character > 0x10FFFF) return kNone;
        bytes.remove_prefix(form.length);
        return character;
    }
    return kNone;
}

}  // namespace

bool FromUtf8(std::string_view bytes, Text& text) {
    text.clear();
    text.reserve(bytes.size());
    while (!bytes.empty()) {
        const std::uint32_t character = Next(bytes);
        if (character == kNone) return false;
        if (character < 0x10000) {
            text += static_cast<char16_t>(character);
        } else {
            text += static_cast<char16_t>(0xD800 + ((character - 0x10000) >> 10));
            text += static_cast<char16_t>(0xDC00 + ((character - 0x10000) & 0x3FF));
        }
    }
    return true;
}

}  // namespace kwo::platform
