#pragma once

#include <optional>
#include <string_view>

#include "platform/text.h"

namespace kwo::kwoinit {

/// Nothing when the bytes are not well-formed UTF-8 (also for surrogates and forms longer than needed).
std::optional<platform::Text> FromUtf8(std::string_view bytes);

}  // namespace kwo::kwoinit
