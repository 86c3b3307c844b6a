#include "com/server/registration_store.h"

#include <cstring>

namespace kwo::com {
namespace {

class OpenKey {
public:
    OpenKey(HKEY root, const std::wstring& path, REGSAM access) {
        mStatus = RegOpenKeyExW(root, path.c_str(), 0, access, &mKey);
    }
    OpenKey(const OpenKey&) = delete;
    OpenKey& operator=(const OpenKey&) = delete;
    ~OpenKey() {
        if (mStatus == ERROR_SUCCESS) RegCloseKey(mKey);
    }

    [[nodiscard]] LSTATUS Status() const { return mStatus; }
    [[nodiscard]] HKEY Get() const { return mKey; }

private:
    HKEY mKey = nullptr;
    LSTATUS mStatus;
};

constexpr REGSAM kOtherBitness = sizeof(void*) == 8 ? KEY_WOW64_32KEY : KEY_WOW64_64KEY;

}  // namespace

StoredValue StoredValue::OfText(const std::wstring& text) {
    StoredValue value{REG_SZ, std::vector<BYTE>((text.size() + 1) * sizeof(wchar_t))};
    std::memcpy(value.bytes.data(), text.c_str(), value.bytes.size());
    return value;
}

std::wstring StoredValue::Text() const {
    if (type != REG_SZ && type != REG_EXPAND_SZ) return {};
    std::wstring text(bytes.size() / sizeof(wchar_t), L'\0');
    std::memcpy(text.data(), bytes.data(), text.size() * sizeof(wchar_t));
    return text.substr(0, text.find(L'\0'));
}

LSTATUS WindowsRegistrationStore::CreateKey(const std::wstring& path, bool& created) {
    HKEY key = nullptr;
    DWORD disposition = 0;
    // Only the access that opening needs: the parents belong to others, who may forbid writing.
    const LSTATUS status = RegCreateKeyExW(mRoot, path.c_str(), 0, nullptr, REG_OPTION_NON_VOLATILE, KEY_QUERY_VALUE,
                                           nullptr, &key, &disposition);
    if (status != ERROR_SUCCESS) return status;
    RegCloseKey(key);
    created = disposition == REG_CREATED_NEW_KEY;
    return ERROR_SUCCESS;
}

LSTATUS WindowsRegistrationStore::DeleteKey(const std::wstring& path) {
    return RegDeleteKeyW(mRoot, path.c_str());
}

LSTATUS WindowsRegistrationStore::IsEmpty(const std::wstring& path, bool& empty) {
    const OpenKey key(mRoot, path, KEY_QUERY_VALUE);
    if (key.Status() != ERROR_SUCCESS) return key.Status();
    DWORD subkeys = 0;
    DWORD values = 0;
    const LSTATUS status = RegQueryInfoKeyW(key.Get(), nullptr, nullptr, nullptr, &subkeys, nullptr, nullptr, &values,
                                            nullptr, nullptr, nullptr, nullptr);
    if (status == ERROR_SUCCESS) empty = subkeys == 0 && values == 0;
    return status;
}

LSTATUS WindowsRegistrationStore::GetValue(const std::wstring& path, const std::wstring& name, StoredValue& value) {
    const OpenKey key(mRoot, path, KEY_QUERY_VALUE);
    if (key.Status() != ERROR_SUCCESS) return key.Status();
    StoredValue found;
    DWORD size = 0;
    LSTATUS status = RegQueryValueExW(key.Get(), name.c_str(), nullptr, &found.type, nullptr, &size);
    // Another process may make the value longer between the two calls.
    do {
        if (status != ERROR_SUCCESS && status != ERROR_MORE_DATA) return status;
        found.bytes.resize(size);
        status = RegQueryValueExW(key.Get(), name.c_str(), nullptr, &found.type, found.bytes.data(), &size);
    } while (status == ERROR_MORE_DATA);
    if (status != ERROR_SUCCESS) return status;
    found.bytes.resize(size);
    value = std::move(found);
    return ERROR_SUCCESS;
}

LSTATUS WindowsRegistrationStore::SetValue(const std::wstring& path, const std::wstring& name,
                                           const StoredValue& value) {
    const OpenKey key(mRoot, path, KEY_SET_VALUE);
    if (key.Status() != ERROR_SUCCESS) return key.Status();
    return RegSetValueExW(key.Get(), name.c_str(), 0, value.type, value.bytes.data(),
                          static_cast<DWORD>(value.bytes.size()));
}

LSTATUS WindowsRegistrationStore::DeleteValue(const std::wstring& path, const std::wstring& name) {
    const OpenKey key(mRoot, path, KEY_SET_VALUE);
    if (key.Status() != ERROR_SUCCESS) return key.Status();
    return RegDeleteValueW(key.Get(), name.c_str());
}

bool WindowsRegistrationStore::OtherBitnessHas(const std::wstring& path) {
    return OpenKey(mRoot, path, KEY_QUERY_VALUE | kOtherBitness).Status() == ERROR_SUCCESS;
}

}  // namespace kwo::com
