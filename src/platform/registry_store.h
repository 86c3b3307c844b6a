#pragma once

#include <cstdint>
#include <string>

#include "platform/text.h"
#include "platform/values.h"

namespace kwo::platform {

/// The system's registry, by its ANSI calls and their status codes; 0 is success. A key is a predefined root or an open
/// key.
///
/// Values are read as bytes: how they become text is a rule of the registry class, and so are the size of the buffer
/// and its contents before the call.
class RegistryStore {
public:
    using Status = std::int32_t;

    /// ERROR_SUCCESS.
    static constexpr Status kSuccess = 0;
    /// ERROR_MORE_DATA: the value is longer than the buffer. Value::length then says how long it is.
    static constexpr Status kMoreData = 234;

    /// An opened key, or the reason why there is none.
    struct KeyResult {
        Status status = kSuccess;
        Handle key = 0;  ///< meaningful when status is kSuccess; the caller closes it
    };

    /// What a query returned.
    struct Value {
        Status status = kSuccess;
        std::uint32_t type = 0;
        std::uint32_t length = 0;  ///< the bytes that the system reported
        std::string bytes;         ///< the buffer after the call, always `capacity` long
    };

    virtual ~RegistryStore() = default;

    /// Opens an existing key (RegOpenKeyExA). `access` is the system's KEY_ flags.
    [[nodiscard]] virtual KeyResult OpenKey(Handle root, TextView name, std::uint32_t access) = 0;
    /// Opens a key, and creates it if necessary (RegCreateKeyExA with an empty class, no options and no security
    /// descriptor). `inheritable` makes the handle one that child processes inherit.
    [[nodiscard]] virtual KeyResult CreateKey(Handle root, TextView name, std::uint32_t access, bool inheritable) = 0;
    /// Deletes a key below `root` (RegDeleteKeyA). The system refuses if the key has keys below it.
    [[nodiscard]] virtual Status DeleteKey(Handle root, TextView name) = 0;
    /// Deletes a value (RegDeleteValueA). An empty name is the default value.
    [[nodiscard]] virtual Status DeleteValue(Handle key, TextView name) = 0;
    /// Reads a value into a buffer of `capacity` bytes, each `fill` before the call (RegQueryValueExA).
    [[nodiscard]] virtual Value Query(Handle key, TextView name, std::uint32_t capacity, char fill) = 0;
    /// Stores a string (RegSetValueExA, type 1): the first `length` bytes of the value in ANSI, padded with zeros after
    /// its end.
    [[nodiscard]] virtual Status SetString(Handle key, TextView name, TextView value, std::uint32_t length) = 0;
    /// Closes a key of OpenKey or CreateKey.
    virtual Status CloseKey(Handle key) = 0;
};

}  // namespace kwo::platform
