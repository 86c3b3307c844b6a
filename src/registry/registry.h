#pragma once

#include <cstdint>
#include <optional>

#include "component/component.h"
#include "platform/registry_store.h"
#include "platform/variant.h"

namespace kwo::registry {

using platform::Handle;
using platform::Text;
using platform::TextView;

/// Keys and string values of the platform's registry. A root is a predefined root (0x80000001 ...) or any open key.
///
/// Members answer with the platform's status code, 0 for success, and raise nothing.
class KWORegistry {
public:
    using Status = platform::RegistryStore::Status;

    explicit KWORegistry(component::Component& component);

    /// The value under an open key, as the type of `defaultValue`; nothing, which stands for `defaultValue` itself, when
    /// it cannot be read or does not convert. The key stays open.
    std::optional<platform::Variant> KWO_RegGetValueEx(Handle key, TextView valueName,
                                                       const platform::Variant& defaultValue);
    [[nodiscard]] Status KWO_RegDeleteKey(Handle root, TextView keyName);
    [[nodiscard]] Status KWO_RegDeleteValue(Handle root, TextView keyName, TextView valueName);
    /// The open key, which stays open: the caller owns it and there is no member that closes it.
    Handle KWO_RegCreateKey(Handle root, TextView keyName);
    /// Stores a string, and creates the key where there is none. An empty value is stored as one blank.
    [[nodiscard]] Status KWO_RegSetValue(Handle root, TextView keyName, TextView valueName, TextView value);
    /// Reads a string without its trailing blanks, or a 32-bit number as decimal text; `value` is empty when there is
    /// neither.
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
