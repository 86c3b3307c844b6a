#pragma once

#include <cstdint>
#include <string>

#include "platform/text.h"
#include "platform/values.h"

namespace kwo::platform {

/// The platform's registry, by the status codes and ANSI calls it has (0 is success). Keys are predefined roots or
/// open keys.
///
/// Values are read as bytes, not as text: how they become text is a rule of the registry class, and so are the size of
/// the buffer and what it holds before the call.
class RegistryStore {
public:
    using Status = std::int32_t;

    static constexpr Status kSuccess = 0;
    static constexpr Status kMoreData = 234;

    struct KeyResult {
        Status status = kSuccess;
        Handle key = 0;  ///< meaningful when status is kSuccess; the caller closes it
    };

    struct Value {
        Status status = kSuccess;
        std::uint32_t type = 0;
        std::uint32_t length = 0;  ///< bytes the platform reported
        std::string bytes;         ///< the buffer after the call, always `capacity` long
    };

    virtual ~RegistryStore() = default;

    [[nodiscard]] virtual KeyResult OpenKey(Handle root, TextView name, std::uint32_t access) = 0;
    /// RegCreateKeyExA with an empty class, no options and no security descriptor.
    [[nodiscard]] virtual KeyResult CreateKey(Handle root, TextView name, std::uint32_t access, bool inheritable) = 0;
    [[nodiscard]] virtual Status DeleteKey(Handle root, TextView name) = 0;
    [[nodiscard]] virtual Status DeleteValue(Handle key, TextView name) = 0;
    /// RegQueryValueExA with a buffer of `capacity` bytes, each `fill` before the call.
    [[nodiscard]] virtual Value Query(Handle key, TextView name, std::uint32_t capacity, char fill) = 0;
    /// RegSetValueExA, type 1 (string): the first `length` bytes of the value in ANSI, padded with zeros behind its
    /// end.
    [[nodiscard]] virtual Status SetString(Handle key, TextView name, TextView value, std::uint32_t length) = 0;
    virtual Status CloseKey(Handle key) = 0;
};

}  // namespace kwo::platform
