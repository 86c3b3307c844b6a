#pragma once

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>

#include "platform/text.h"

namespace kwo::platform::windows {

/// Text from bytes in `codePage`, which the system must have; by default its ANSI code page. Zero bytes become zero
/// characters.
Text FromAnsi(std::string_view bytes, unsigned codePage = 0);
/// Bytes in the system's ANSI code page. A character that it lacks becomes a similar one, else '?'.
std::string ToAnsi(TextView text);

/// The text that a call reports to have written into a buffer. Some calls report the length that they need: nothing
/// after the buffer is read.
template <std::size_t Size>
Text FromBuffer(const char (&buffer)[Size], std::size_t length) {
    return FromAnsi({buffer, std::min(length, Size)});
}

/// The text up to the first zero in a buffer that a call may have left without one.
template <std::size_t Size>
Text FromBufferUpToZero(const char (&buffer)[Size], std::size_t length = Size) {
    const std::string_view written(buffer, std::min(length, Size));
    return FromAnsi(written.substr(0, written.find('\0')));
}

/// The system's wide strings have the same characters in another type.
inline std::wstring ToWide(TextView text) {
    return {text.begin(), text.end()};
}
/// The same the other way round.
inline Text FromWide(std::wstring_view text) {
    return {text.begin(), text.end()};
}

}  // namespace kwo::platform::windows
