#pragma once

#include "platform/registry_store.h"
#include "platform/windows/context.h"

namespace kwo::platform::windows {

/// The registry of Windows, in the view of the program's bitness.
/// Names and values are passed in the ANSI code page. The buffer of a query is filled again after a failure, because
/// the system may have written a part of the value.
class WindowsRegistryStore final : public RegistryStore {
public:
    explicit WindowsRegistryStore(Context& context) : mLastError(context.lastError) {}

    KeyResult OpenKey(Handle root, TextView name, std::uint32_t access) override;
    /// RegCreateKeyExA. Whether the key was there before is not reported.
    KeyResult CreateKey(Handle root, TextView name, std::uint32_t access, bool inheritable) override;
    /// RegDeleteKeyA: it deletes nothing below the key.
    Status DeleteKey(Handle root, TextView name) override;
    Status DeleteValue(Handle key, TextView name) override;
    /// RegQueryValueExA, once. The buffer is the one of the result.
    Value Query(Handle key, TextView name, std::uint32_t capacity, char fill) override;
    /// RegSetValueExA with REG_SZ.
    /// A text that goes on is not cut first: a zero behind the bytes would be stored with them.
    Status SetString(Handle key, TextView name, TextView value, std::uint32_t length) override;
    Status CloseKey(Handle key) override;

private:
    LastError& mLastError;
};

}  // namespace kwo::platform::windows
