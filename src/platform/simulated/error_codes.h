#pragma once

#include <cstdint>

namespace kwo::platform::simulated {

/// Codes of the system's errors that several services answer with.
constexpr std::int32_t kFileNotFound = 2;
constexpr std::int32_t kPathNotFound = 3;
constexpr std::int32_t kAccessDenied = 5;
constexpr std::int32_t kInvalidHandle = 6;
constexpr std::int32_t kInvalidParameter = 87;

}  // namespace kwo::platform::simulated
