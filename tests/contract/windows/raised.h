#pragma once

#include <gtest/gtest.h>

#include "platform/component_error.h"

namespace kwo::platform::windows {

/// What `body` raises; a failure of the test and number 0 when it raises nothing.
template <class Body>
ComponentError Raised(Body&& body) {
    try {
        body();
    } catch (const ComponentError& error) {
        return error;
    }
    ADD_FAILURE() << "nothing was raised";
    return {};
}

inline constexpr std::int32_t kOverflow = 6;
inline constexpr std::int32_t kMismatch = 13;

}  // namespace kwo::platform::windows
