#include "kwocheck/file_formats.h"

#include <algorithm>
#include <cstdint>

#include "kwocheck/words.h"

namespace kwocheck {

namespace {

/// A number with the low byte first; nothing beyond the end.
std::optional<std::uint32_t> NumberAt(std::string_view bytes, std::size_t at, std::size_t size) {
    if (at > bytes.size() || bytes.size() - at < size) return std::nullopt;
    std::uint32_t number = 0;
    for (std::size_t byte = size; byte-- > 0;)
        number = number << 8 | static_cast<unsigned char>(bytes[at + byte]);
    return number;
}

/// The characters from `at` up to a zero or the end.
Text WideText(std::string_view bytes, std::size_t at) {
    Text text;
    for (auto next = NumberAt(bytes, at, 2); next && *next != 0; next = NumberAt(bytes, at += 2, 2))
        text += static_cast<char16_t>(*next);
    return text;
}

std::string WideBytes(TextView text) {
    std::string bytes;
    for (const char16_t c : text) {
        bytes += static_cast<char>(c & 0xFF);
        bytes += static_cast<char>(c >> 8);
    }
    return bytes;
}

bool BeginsWith(TextView path, TextView folder) {
    return path.size() >= folder.size() && AreSamePaths(path.substr(0, folder.size()), folder);
}

}  // namespace

std::optional<Bitness> BitnessOf(std::string_view bytes) {
    constexpr std::uint32_t kIntel32 = 0x14C;
    constexpr std::uint32_t kAmd64 = 0x8664;
    if (!bytes.starts_with("MZ")) return std::nullopt;
    const auto header = NumberAt(bytes, 0x3C, 4);
    if (!header || *header > bytes.size() || bytes.substr(*header, 4) != std::string_view("PE\0\0", 4)) {
        return std::nullopt;
    }
    const auto machine = NumberAt(bytes, *header + std::size_t{4}, 2);
    if (machine == kAmd64) return Bitness::k64;
    if (machine == kIntel32) return Bitness::k32;
    return std::nullopt;
}

VersionFacts ReadVersionResource(std::string_view bytes) {
    VersionFacts facts;
    // The fixed part begins with this signature. The two halves of the file's version follow 8 bytes behind it.
    const std::size_t fixed = bytes.find("\xBD\x04\xEF\xFE");
    if (fixed != std::string_view::npos) {
        const auto high = NumberAt(bytes, fixed + 8, 4);
        const auto low = NumberAt(bytes, fixed + 12, 4);
        if (high && low) {
            facts.version = Decimal(*high >> 16) + u"." + Decimal(*high & 0xFFFF) + u"." + Decimal(*low >> 16) + u"." +
                            Decimal(*low & 0xFFFF);
        }
    }
    // A text follows its name, at the next multiple of four.
    const std::string name = WideBytes(TextView(u"ProductName\0", 12));
    const std::size_t found = bytes.find(name);
    if (found != std::string_view::npos) facts.product = WideText(bytes, (found + name.size() + 3) / 4 * 4);
    return facts;
}

bool IsZoneMark(std::string_view bytes) {
    constexpr std::string_view kKey = "ZoneId=";
    const std::size_t found = bytes.find(kKey);
    if (found == std::string_view::npos) return false;
    const std::string_view zone = bytes.substr(found + kKey.size());
    // 3 is the Internet, 4 are the sites that are not trusted.
    return zone.starts_with('3') || zone.starts_with('4');
}

Text RedirectedPath(TextView path, TextView windowsFolder, Bitness own, Bitness view) {
    const Text system = Text(windowsFolder) + u"\\System32\\";
    if (own == view || !BeginsWith(path, system)) return Text(path);
    const TextView there = view == Bitness::k32 ? u"\\SysWOW64\\" : u"\\Sysnative\\";
    return Text(windowsFolder) + Text(there) + Text(path.substr(system.size()));
}

}  // namespace kwocheck
