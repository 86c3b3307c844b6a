#pragma once

#include <string_view>

#include "platform/text.h"

namespace kwo::platform {

/// Converts UTF-8 bytes to text. Returns false if they are not well-formed UTF-8 (surrogates and overlong forms are
/// not); `text` is then undefined.
bool FromUtf8(std::string_view bytes, Text& text);

}  // namespace kwo::platform
