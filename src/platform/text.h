#pragma once

#include <string>
#include <string_view>

namespace kwo::platform {

/// Text as an automation client counts it: UTF-16 code units.
using Text = std::u16string;
using TextView = std::u16string_view;

}  // namespace kwo::platform
