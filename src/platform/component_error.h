#pragma once

#include <cstdint>
#include <utility>

#include "platform/text.h"

namespace kwo::platform {

/// The one kind of failure inside the component. It crosses no interface: the automation shell turns it into what
/// the caller's way of calling shows.
struct ComponentError {
    std::int32_t number = 0;  ///< never 0 when thrown
    Text source;
    Text description;
    Text helpFile;
    std::int32_t helpContext = 0;
};

/// Numbers that automation clients know as the errors of the language's own run-time.
enum class RuntimeError : std::int32_t {
    InvalidProcedureCall = 5,
    Overflow = 6,
    SubscriptOutOfRange = 9,
    TypeMismatch = 13,
    FileNotFound = 53,
    NoObjectSet = 91,
    ObjectRequired = 424,
    CannotCreateObject = 429,
    NoSuchMember = 438,
};

[[noreturn]] void Raise(std::int32_t number, TextView source, TextView description);

/// Raises `error` with its usual English description.
[[noreturn]] void RaiseRuntime(RuntimeError error, TextView source = {});

}  // namespace kwo::platform
