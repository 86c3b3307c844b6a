#pragma once

#include <string>
#include <string_view>

namespace kwohost {

/// Why the bytes of a script are not text, in words for its author.
struct UndecodableSource {
    std::u16string reason;
};

/// The text of a script file's bytes; its lines end in CR LF. The bytes are UTF-8, with or without a byte order mark,
/// or UTF-16 with the low byte first. Throws UndecodableSource.
std::u16string DecodeSource(std::string_view bytes);

}  // namespace kwohost
