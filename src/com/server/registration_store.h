#pragma once

#include <windows.h>

#include <string>
#include <vector>

namespace kwo::com {

/// A registry value as it is stored: its type and its bytes, terminators included.
/// It may be of any type: registration puts back what it found.
struct StoredValue {
    /// The system's REG_ number.
    DWORD type = REG_NONE;
    std::vector<BYTE> bytes;

    /// A text as the registry stores it (REG_SZ), with its terminator.
    static StoredValue OfText(const std::wstring& text);
    /// The text up to the first terminator; empty if the value is not a text (REG_SZ or REG_EXPAND_SZ).
    /// Nothing is expanded.
    [[nodiscard]] std::wstring Text() const;
};

/// The registry, as registration reads and writes it.
/// RegistryChanges adds the undoing.
///
/// Paths start below one root key and use backslashes; upper and lower case are the same. An empty name is the default
/// value of a key.
/// Results are Windows status codes: 0 is success, 2 means that there is no such key or value. Members raise nothing
/// but lack of memory.
class RegistrationStore {
public:
    virtual ~RegistrationStore() = default;
    /// Opens or creates the last key of `path`. Its parent must exist. `created` is set on success only.
    [[nodiscard]] virtual LSTATUS CreateKey(const std::wstring& path, bool& created) = 0;
    /// Deletes a key with its values. The key must have no subkeys; the status says if it has.
    [[nodiscard]] virtual LSTATUS DeleteKey(const std::wstring& path) = 0;
    /// Whether the key has neither subkeys nor values. `empty` is set on success only.
    [[nodiscard]] virtual LSTATUS IsEmpty(const std::wstring& path, bool& empty) = 0;
    /// Reads a value of any type and size. `value` is set on success only.
    [[nodiscard]] virtual LSTATUS GetValue(const std::wstring& path, const std::wstring& name, StoredValue& value) = 0;
    /// Stores a value over the old one. The key must exist.
    [[nodiscard]] virtual LSTATUS SetValue(const std::wstring& path, const std::wstring& name,
                                           const StoredValue& value) = 0;
    /// Deletes a value. The status says if there is no such value or key.
    [[nodiscard]] virtual LSTATUS DeleteValue(const std::wstring& path, const std::wstring& name) = 0;
    /// Whether programs of the other bitness see this key.
    /// 32-bit Windows has only one view, where this is the key itself.
    [[nodiscard]] virtual bool OtherBitnessHas(const std::wstring& path) = 0;
};

/// The registry itself, below a root key that stays open while this object exists.
/// Names and texts are UTF-16. A key is opened with no more rights than the call needs, because its owner may forbid
/// the others.
class WindowsRegistrationStore final : public RegistrationStore {
public:
    /// `root` is a predefined root or an open key; it is not closed here.
    explicit WindowsRegistrationStore(HKEY root) : mRoot(root) {}

    [[nodiscard]] LSTATUS CreateKey(const std::wstring& path, bool& created) override;
    [[nodiscard]] LSTATUS DeleteKey(const std::wstring& path) override;
    [[nodiscard]] LSTATUS IsEmpty(const std::wstring& path, bool& empty) override;
    [[nodiscard]] LSTATUS GetValue(const std::wstring& path, const std::wstring& name, StoredValue& value) override;
    [[nodiscard]] LSTATUS SetValue(const std::wstring& path, const std::wstring& name,
                                   const StoredValue& value) override;
    [[nodiscard]] LSTATUS DeleteValue(const std::wstring& path, const std::wstring& name) override;
    [[nodiscard]] bool OtherBitnessHas(const std::wstring& path) override;

private:
    HKEY mRoot;
};

}  // namespace kwo::com
