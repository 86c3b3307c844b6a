#pragma once

#include <string_view>

#include "platform/text.h"

namespace kwo::kwoinit {

/// Converts UTF-8 bytes to text. Returns false if they are not well-formed UTF-8 (surrogates and overlong forms are
/// not); `text` is then undefined.
bool FromUtf8(std::string_view bytes, platform::Text& text);

}  // namespace kwo::kwoinit
