#pragma once

#include <set>
#include <string>
#include <vector>

#include "com/server/registration_store.h"

namespace kwo::com {

/// Changes that are undone, the last one first, unless they are kept: created keys are deleted, deleted keys created,
/// and values restored.
///
///     RegistryChanges changes(store);
///     changes.CreateKey(path);
///     changes.SetValue(path, L"", text);  // if it throws, the key is deleted again
///     changes.Keep();
///
/// Every member throws RegistrationFailure if the store refuses, and std::bad_alloc.
class RegistryChanges {
public:
    /// `store` must outlive it.
    explicit RegistryChanges(RegistrationStore& store) : mStore(store) {}
    RegistryChanges(const RegistryChanges&) = delete;
    RegistryChanges& operator=(const RegistryChanges&) = delete;
    /// Undoes all changes since the last Keep. A failure to undo one does not stop the others.
    ~RegistryChanges();

    /// Creates the key and its missing parents. Does nothing for keys that are there.
    void CreateKey(const std::wstring& path);
    /// Stores a value over the old one, whatever its type. The key must exist.
    void SetValue(const std::wstring& path, const std::wstring& name, const StoredValue& value);
    /// Does nothing if there is no such value or key.
    void DeleteValue(const std::wstring& path, const std::wstring& name);
    /// Does nothing if the key has keys or values, or is not there.
    void DeleteKeyIfEmpty(const std::wstring& path);
    /// Whether this object has created the key.
    [[nodiscard]] bool Created(const std::wstring& path) const { return mCreated.contains(path); }
    /// Makes the changes so far permanent.
    void Keep() { mChanges.clear(); }

private:
    enum class Undo { kNothing, kDeleteKey, kCreateKey, kDeleteValue, kSetValue };
    struct Change {
        Undo undo;
        std::wstring path;
        /// Of the value.
        std::wstring name;
        /// The value that was there; only for kSetValue.
        StoredValue before;
    };

    void UndoOne(const Change& change);
    /// The parent must be there.
    void CreateOneKey(const std::wstring& path);

    RegistrationStore& mStore;
    /// Keys that are known to be there, so that each is asked for once.
    std::set<std::wstring> mPresent;
    /// Keys that this object has created.
    std::set<std::wstring> mCreated;
    /// In the order in which they were made.
    std::vector<Change> mChanges;
};

}  // namespace kwo::com
