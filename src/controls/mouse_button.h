#pragma once

#include <cstdint>

namespace kwo::controls {

/// The left button, as forms number the buttons in their mouse events.
constexpr std::int16_t kLeftButton = 1;

}  // namespace kwo::controls
