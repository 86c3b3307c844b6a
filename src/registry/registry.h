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
/// A root is the number of a predefined root (0x80000001 ...) or of any open key. Text is passed in the ANSI code page.
/// Members return the system's status code, 0 for success, and raise nothing but lack of memory.
class KWORegistry {
public:
    using Status = platform::RegistryStore::Status;

    /// `component` must outlive the object.
    explicit KWORegistry(component::Component& component);

    /// Reads a value of the open key `key`, as the type of `defaultValue`: text of any length, a date in the user's
    /// locale, or a number of up to 32 bits. Returns nothing if the value cannot be read or does not fit the type; the
    /// caller then uses `defaultValue`. The key stays open.
    std::optional<platform::Variant> KWO_RegGetValueEx(Handle key, TextView valueName,
                                                       const platform::Variant& defaultValue);
    /// Deletes a key. The system refuses if the key has keys below it.
    [[nodiscard]] Status KWO_RegDeleteKey(Handle root, TextView keyName);
    /// Deletes a value. An empty `valueName` is the key's default value.
    [[nodiscard]] Status KWO_RegDeleteValue(Handle root, TextView keyName, TextView valueName);
    /// Opens a key, and creates it if necessary. The caller owns the open key; no member closes it. After a failure the
    /// result is the key that this object used last, or 0.
    Handle KWO_RegCreateKey(Handle root, TextView keyName);
    /// Stores a string, and creates the key if necessary. An empty `value` is stored as one blank.
    [[nodiscard]] Status KWO_RegSetValue(Handle root, TextView keyName, TextView valueName, TextView value);
    /// Reads a value of up to 1,024 bytes into `value`: a string without its trailing blanks, or a 32-bit number as
    /// decimal text. `value` is empty for any other type, and whenever the status is not 0. Numbers with a byte below
    /// 16 or a high byte of 32 are read wrongly, which is intended.
    [[nodiscard]] Status KWO_RegGetValue(Handle root, TextView keyName, TextView valueName, Text& value);

private:
    class OpenedKey;

    Status Keep(Status status);
    Status KeepKey(const platform::RegistryStore::KeyResult& result);
    Text TextOf(const platform::RegistryStore::Value& value);
    std::optional<platform::Variant> ReadText(Handle key, TextView valueName, const platform::Variant& like);
    std::optional<platform::Variant> ReadNumber(Handle key, TextView valueName, const platform::Variant& like);

    platform::RegistryStore& mStore;
    platform::Conversions& mConversions;
    frame::ApiResult& mApiResult;
    Handle mKey = 0;
};

}  // namespace kwo::registry
