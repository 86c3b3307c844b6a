#pragma once

#include "platform/registry_store.h"
#include "platform/windows/context.h"

namespace kwo::platform::windows {

/// The registry of Windows. Names and values are passed in the ANSI code page.
class WindowsRegistryStore final : public RegistryStore {
public:
    explicit WindowsRegistryStore(Context& context) : mLastError(context.lastError) {}

    KeyResult OpenKey(Handle root, TextView name, std::uint32_t access) override;
    KeyResult CreateKey(Handle root, TextView name, std::uint32_t access, bool inheritable) override;
    Status DeleteKey(Handle root, TextView name) override;
    Status DeleteValue(Handle key, TextView name) override;
    Value Query(Handle key, TextView name, std::uint32_t capacity, char fill) override;
    Status SetString(Handle key, TextView name, TextView value, std::uint32_t length) override;
    Status CloseKey(Handle key) override;

private:
    LastError& mLastError;
};

}  // namespace kwo::platform::windows
