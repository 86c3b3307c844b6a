#pragma once

#include <optional>

#include "component/component.h"
#include "platform/registry_store.h"
#include "platform/variant.h"

namespace kwo::registry {

using platform::Handle;
using platform::Text;
using platform::TextView;

/// Reads and writes keys and string values of the system's registry.
///
/// A root is the number of a predefined root (0x80000001 ...) or of any open key. Names are paths below it; text is
/// passed in the ANSI code page, and a name ends at its first zero character.
/// Members return the system's status code, 0 for success, and raise nothing but lack of memory. Each status is also
/// kept as the component's ApiResult; at the end of a member that opens a key it is that of closing the key.
class KWORegistry {
public:
    using Status = platform::RegistryStore::Status;

    /// `component` must outlive the object. Sets the component's program name.
    explicit KWORegistry(component::Component& component);

    /// Reads a value of the open key `key`, as the type of `defaultValue`: text of any length, a date in the user's
    /// locale, or a number of up to 32 bits.
    /// The key stays open.
    ///
    /// A text ends at its first zero byte and loses trailing blanks; the text "0" is the date 0. A number is read from
    /// at most four bytes, whatever the type of the value.
    /// Returns nothing if the value cannot be read or does not fit the type, or if `defaultValue` is of another type;
    /// the caller then uses `defaultValue`.
    std::optional<platform::Variant> KWO_RegGetValueEx(Handle key, TextView valueName,
                                                       const platform::Variant& defaultValue);
    /// Deletes a key with its values. The system refuses with 5 if the key has keys below it.
    [[nodiscard]] Status KWO_RegDeleteKey(Handle root, TextView keyName);
    /// Deletes a value.
    /// An empty `valueName` is the key's default value. The key is opened with all rights, so it needs more rights
    /// than deleting alone.
    [[nodiscard]] Status KWO_RegDeleteValue(Handle root, TextView keyName, TextView valueName);
    /// Opens a key with the rights to read and write, and creates it if necessary.
    /// The caller owns the open key; no member closes it.
    /// After a failure the result is the key that this object used last, open or closed, or 0: see docs/intended.md.
    Handle KWO_RegCreateKey(Handle root, TextView keyName);
    /// Stores a string with its terminating zero, and creates the key if necessary.
    /// An empty `value` is stored as one blank. Zero characters inside `value` are stored too.
    [[nodiscard]] Status KWO_RegSetValue(Handle root, TextView keyName, TextView valueName, TextView value);
    /// Reads a value of up to 1,024 bytes into `value`: a string without its trailing blanks, or a 32-bit number as
    /// decimal text.
    /// A longer value gives the status 234.
    /// `value` is empty for any other type, and whenever the status is not 0. Numbers with a byte below 16 or a high
    /// byte of 32 are read wrongly, which is intended.
    [[nodiscard]] Status KWO_RegGetValue(Handle root, TextView keyName, TextView valueName, Text& value);

private:
    /// A key that is open as long as a member runs.
    class OpenedKey;

    /// Keeps the status as the component's ApiResult.
    Status Keep(Status status);
    /// Keeps the status and, after a success, the key.
    Status KeepKey(const platform::RegistryStore::KeyResult& result);
    Text TextOf(const platform::RegistryStore::Value& value);
    std::optional<platform::Variant> ReadText(Handle key, TextView valueName, const platform::Variant& like);
    std::optional<platform::Variant> ReadNumber(Handle key, TextView valueName, const platform::Variant& like);

    platform::RegistryStore& mStore;
    platform::Conversions& mConversions;
    frame::ApiResult& mApiResult;
    /// The key that was opened last, open or not; 0 at first.
    Handle mKey = 0;
};

}  // namespace kwo::registry
