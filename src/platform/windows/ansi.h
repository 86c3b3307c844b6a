#pragma once

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>

#include "platform/text.h"

namespace kwo::platform::windows {

/// Text from bytes in `codePage`, which the system must have; by default its ANSI code page.
/// Zero bytes become zero characters, and bytes that the page lacks become other characters.
/// Raises std::bad_alloc, also if the system refuses the conversion: an empty text in its place would name another
/// key, file or value.
Text FromAnsi(std::string_view bytes, unsigned codePage = 0);
/// Bytes in the system's ANSI code page, without a terminating zero.
/// A character may take several bytes.
/// A character that the page lacks becomes a similar one, else '?'.
/// Raises std::bad_alloc as FromAnsi does.
std::string ToAnsi(TextView text);

/// The text that a call reports to have written into a buffer, zero characters included:
///
///     char buffer[16] = "";
///     DWORD length = sizeof buffer;
///     if (::GetComputerNameA(buffer, &length)) name = FromBuffer(buffer, length);
///
/// `length` counts bytes without the terminating zero. Some calls report the length that they need instead: nothing
/// after the buffer is read.
template <std::size_t Size>
Text FromBuffer(const char (&buffer)[Size], std::size_t length) {
    return FromAnsi({buffer, std::min(length, Size)});
}

/// The text up to the first zero in a buffer that a call may have left without one, and up to `length` bytes.
template <std::size_t Size>
Text FromBufferUpToZero(const char (&buffer)[Size], std::size_t length = Size) {
    const std::string_view written(buffer, std::min(length, Size));
    return FromAnsi(written.substr(0, written.find('\0')));
}

/// The system's wide strings have the same characters in another type.
/// Zero characters stay: a call that takes `c_str()` reads up to the first one.
inline std::wstring ToWide(TextView text) {
    return {text.begin(), text.end()};
}
/// The same the other way round.
inline Text FromWide(std::wstring_view text) {
    return {text.begin(), text.end()};
}

}  // namespace kwo::platform::windows
