#pragma once

#include <string_view>

#include "platform/text.h"

namespace kwo::platform {

/// Converts UTF-8 bytes to text; characters beyond 0xFFFF become surrogate pairs.
/// A byte order mark is a character like any other, and zero bytes become zero characters.
/// Returns false if the bytes are not well-formed UTF-8: surrogates and overlong forms are not, nor is anything beyond
/// 0x10FFFF. `text` is then undefined. An empty input is an empty text.
bool FromUtf8(std::string_view bytes, Text& text);

}  // namespace kwo::platform
