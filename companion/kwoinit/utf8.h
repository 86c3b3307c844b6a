#pragma once

#include <string_view>

#include "platform/text.h"

namespace kwo::kwoinit {

/// Makes `text` what the bytes write. False when they are not well-formed UTF-8 (also for surrogates and forms longer
/// than needed); `text` is then of no use.
bool FromUtf8(std::string_view bytes, platform::Text& text);

}  // namespace kwo::kwoinit
