#pragma once

#include <functional>
#include <set>
#include <string>
#include <vector>

#include "com/server/registration_store.h"

namespace kwo::com {

/// Changes that are undone, the last one first, unless they are kept: created keys are deleted, deleted keys created,
/// and values restored. Every member throws RegistrationFailure if the store refuses.
class RegistryChanges {
public:
    /// `store` must outlive it.
    explicit RegistryChanges(RegistrationStore& store) : mStore(store) {}
    RegistryChanges(const RegistryChanges&) = delete;
    RegistryChanges& operator=(const RegistryChanges&) = delete;
    /// Undoes all changes since the last Keep. A failure to undo one does not stop the others.
    ~RegistryChanges();

    /// Creates the key and its missing parents.
    void CreateKey(const std::wstring& path);
    /// The key must exist.
    void SetValue(const std::wstring& path, const std::wstring& name, const StoredValue& value);
    /// Does nothing if there is no such value or key.
    void DeleteValue(const std::wstring& path, const std::wstring& name);
    /// Does nothing if the key has keys or values, or is not there.
    void DeleteKeyIfEmpty(const std::wstring& path);
    /// Whether this object has created the key.
    [[nodiscard]] bool Created(const std::wstring& path) const { return mCreated.contains(path); }
    /// Makes the changes so far permanent.
    void Keep() { mUndo.clear(); }

private:
    void CreateOneKey(const std::wstring& path);

    RegistrationStore& mStore;
    std::set<std::wstring> mPresent;
    std::set<std::wstring> mCreated;
    std::vector<std::function<void()>> mUndo;
};

}  // namespace kwo::com
