#pragma once

#include <string>
#include <string_view>

namespace kwohost {

/// Why the bytes of a script are not text, in words for its author. Thrown as an exception.
struct UndecodableSource {
    std::u16string reason;
};

/// The text of a script file's bytes; its lines end in CR LF, whatever they ended in.
/// The bytes are UTF-8, with or without a byte order mark, or UTF-16 with the low byte first. UTF-16 without a mark is
/// recognised by the zero byte behind the first character.
/// Throws UndecodableSource for anything else, and for a zero character, at which an engine would stop reading. Needs
/// no Windows.
std::u16string DecodeSource(std::string_view bytes);

}  // namespace kwohost
