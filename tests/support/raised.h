#pragma once

#include <cstdint>

#include "platform/component_error.h"

namespace kwo::test_support {

/// What is raised for a value of a wrong type.
constexpr std::int32_t kMismatch = 13;

/// The error that `body` raises; its number is 0 if it raises none.
template <class Body>
platform::ComponentError Raised(Body&& body) {
    try {
        body();
        return {};
    } catch (const platform::ComponentError& error) {
        return error;
    }
}

/// The number of the error that `body` raises; 0 if it raises none.
template <class Body>
std::int32_t RaisedNumber(Body&& body) {
    return Raised(body).number;
}

}  // namespace kwo::test_support
