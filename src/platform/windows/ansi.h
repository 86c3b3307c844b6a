#pragma once

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>

#include "platform/text.h"

namespace kwo::platform::windows {

/// One byte string of the system's code page after the other, zero bytes included.
Text FromAnsi(std::string_view bytes);
/// '?' stands for what the code page does not have.
std::string ToAnsi(TextView text);

/// What a call says that it wrote into a buffer. Some calls tell the length that they would have liked: nothing behind
/// the buffer is read.
template <std::size_t Size>
Text FromBuffer(const char (&buffer)[Size], std::size_t length) {
    return FromAnsi({buffer, std::min(length, Size)});
}

/// What a call wrote into a buffer that it may have left without an end.
template <std::size_t Size>
Text FromBufferUpToZero(const char (&buffer)[Size], std::size_t length = Size) {
    const std::string_view written(buffer, std::min(length, Size));
    return FromAnsi(written.substr(0, written.find('\0')));
}

/// The wide strings of the system are the same characters under another type.
inline std::wstring ToWide(TextView text) {
    return {text.begin(), text.end()};
}
inline Text FromWide(std::wstring_view text) {
    return {text.begin(), text.end()};
}

}  // namespace kwo::platform::windows
