#pragma once

#include <string>
#include <string_view>

namespace kwo::platform {

/// Text as an automation client counts it: UTF-16 code units, so a character beyond 0xFFFF counts as two.
/// It may contain zero characters and halves of surrogate pairs, as the host passed them.
using Text = std::u16string;
using TextView = std::u16string_view;

}  // namespace kwo::platform
