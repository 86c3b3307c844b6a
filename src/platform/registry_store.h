#pragma once

#include <cstdint>
#include <string>

#include "platform/text.h"
#include "platform/values.h"

namespace kwo::platform {

/// The system's registry, by its ANSI calls and their status codes; 0 is success.
///
///     const auto opened = store.OpenKey(root, u"Software\\Vendor", 1);
///     if (opened.status != RegistryStore::kSuccess) return opened.status;
///     const auto value = store.Query(opened.key, u"Folder", 1024, '\0');
///     store.CloseKey(opened.key);
///
/// A key is a predefined root (0x80000000 and so on) or an open key. Names are passed in the ANSI code page and end at
/// their first zero character; upper and lower case are the same. The parts of a path are separated by backslashes.
/// Values are read as bytes: how they become text is a rule of the registry class, and so are the size of the buffer
/// and its contents before the call.
/// No call raises anything but lack of memory. Frequent codes are 2 (not found), 5 (access denied) and 6 (not a key).
class RegistryStore {
public:
    /// A code of the system (ERROR_); 0 is success.
    using Status = std::int32_t;

    /// ERROR_SUCCESS.
    static constexpr Status kSuccess = 0;
    /// ERROR_MORE_DATA: the value is longer than the buffer. Value::length then says how long it is.
    static constexpr Status kMoreData = 234;

    /// An opened key, or the reason why there is none.
    struct KeyResult {
        Status status = kSuccess;
        /// Meaningful when status is kSuccess. The caller closes it.
        Handle key = 0;
    };

    /// What a query returned.
    struct Value {
        Status status = kSuccess;
        /// The system's REG_ number of the value's type, also when the buffer was too small.
        std::uint32_t type = 0;
        /// The bytes that the system reported: those of the value, of which a string's terminating zero is one if it
        /// was stored.
        std::uint32_t length = 0;
        /// The buffer after the call, always `capacity` long.
        /// After a failure every byte is `fill`.
        /// If a string was stored without its terminating zero, the system adds one where there is room; `length` does
        /// not count it.
        std::string bytes;
    };

    virtual ~RegistryStore() = default;

    /// Opens an existing key (RegOpenKeyExA).
    /// `name` is a path below `root`; empty opens `root` itself once more. `access` is the system's KEY_ numbers.
    [[nodiscard]] virtual KeyResult OpenKey(Handle root, TextView name, std::uint32_t access) = 0;
    /// Opens a key and creates it, with the keys above it, if necessary (RegCreateKeyExA with an empty class, no
    /// options and no security descriptor).
    /// `inheritable` makes the handle one that child processes inherit.
    [[nodiscard]] virtual KeyResult CreateKey(Handle root, TextView name, std::uint32_t access, bool inheritable) = 0;
    /// Deletes a key below `root` with all its values (RegDeleteKeyA).
    /// The system refuses with 5 if the key has keys below it.
    /// A key that is open somewhere is gone all the same; its handles then only return failures.
    [[nodiscard]] virtual Status DeleteKey(Handle root, TextView name) = 0;
    /// Deletes a value (RegDeleteValueA).
    /// An empty name is the key's default value. `key` needs the right KEY_SET_VALUE.
    [[nodiscard]] virtual Status DeleteValue(Handle key, TextView name) = 0;
    /// Reads a value into a buffer of `capacity` bytes, each `fill` before the call (RegQueryValueExA).
    /// `key` needs the right KEY_QUERY_VALUE.
    /// kMoreData means that the buffer is too small; ask again with Value::length bytes. Another program may change
    /// the value in between.
    [[nodiscard]] virtual Value Query(Handle key, TextView name, std::uint32_t capacity, char fill) = 0;
    /// Stores a string (RegSetValueExA, type 1): the first `length` bytes of the value in ANSI, padded with zeros
    /// after its end.
    /// `length` counts bytes, and includes the terminating zero if there is to be one. If those bytes do not end with
    /// a zero and the byte behind them is one, for example the end of the text, the system stores that zero too.
    [[nodiscard]] virtual Status SetString(Handle key, TextView name, TextView value, std::uint32_t length) = 0;
    /// Closes a key of OpenKey or CreateKey. A root may be closed as well and stays usable. 6 for anything else.
    virtual Status CloseKey(Handle key) = 0;
};

}  // namespace kwo::platform
