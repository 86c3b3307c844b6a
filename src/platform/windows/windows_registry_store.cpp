#include "platform/windows/windows_registry_store.h"

#include "platform/windows/ansi.h"
#include "platform/windows/handles.h"

namespace kwo::platform::windows {

RegistryStore::KeyResult WindowsRegistryStore::OpenKey(Handle root, TextView name, std::uint32_t access) {
    HKEY key = nullptr;
    const std::string path = ToAnsi(name);
    const Status status = mLastError.After(::RegOpenKeyExA(ToNative<HKEY>(root), path.c_str(), 0, access, &key));
    return {status, FromNative(key)};
}

RegistryStore::KeyResult WindowsRegistryStore::CreateKey(Handle root, TextView name, std::uint32_t access,
                                                         bool inheritable) {
    HKEY key = nullptr;
    DWORD disposition = 0;
    SECURITY_ATTRIBUTES security = {sizeof security, nullptr, inheritable};
    const std::string path = ToAnsi(name);
    char noClass[] = "";
    const Status status = mLastError.After(
        ::RegCreateKeyExA(ToNative<HKEY>(root), path.c_str(), 0, noClass, 0, access, &security, &key, &disposition));
    return {status, FromNative(key)};
}

RegistryStore::Status WindowsRegistryStore::DeleteKey(Handle root, TextView name) {
    return mLastError.After(::RegDeleteKeyA(ToNative<HKEY>(root), ToAnsi(name).c_str()));
}

RegistryStore::Status WindowsRegistryStore::DeleteValue(Handle key, TextView name) {
    return mLastError.After(::RegDeleteValueA(ToNative<HKEY>(key), ToAnsi(name).c_str()));
}

RegistryStore::Value WindowsRegistryStore::Query(Handle key, TextView name, std::uint32_t capacity, char fill) {
    Value value;
    value.bytes.assign(capacity, fill);
    DWORD type = 0;
    DWORD length = capacity;
    auto* const buffer = reinterpret_cast<BYTE*>(value.bytes.data());
    value.status = mLastError.After(
        ::RegQueryValueExA(ToNative<HKEY>(key), ToAnsi(name).c_str(), nullptr, &type, buffer, &length));
    // After a failure the buffer may hold a part of a value that has changed meanwhile.
    if (value.status != kSuccess) value.bytes.assign(capacity, fill);
    value.type = type;
    value.length = length;
    return value;
}

RegistryStore::Status WindowsRegistryStore::SetString(Handle key, TextView name, TextView value, std::uint32_t length) {
    std::string data = ToAnsi(value);
    // Not cut: a zero right behind the given length would be stored with the value.
    if (data.size() < length) data.resize(length, '\0');
    return mLastError.After(::RegSetValueExA(ToNative<HKEY>(key), ToAnsi(name).c_str(), 0, REG_SZ,
                                             reinterpret_cast<const BYTE*>(data.data()), length));
}

RegistryStore::Status WindowsRegistryStore::CloseKey(Handle key) {
    return mLastError.After(::RegCloseKey(ToNative<HKEY>(key)));
}

}  // namespace kwo::platform::windows
