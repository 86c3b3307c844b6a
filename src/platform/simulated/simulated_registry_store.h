#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>

#include "platform/registry_store.h"
#include "platform/simulated/world.h"

namespace kwo::platform::simulated {

/// A registry in memory, with the status codes of the NT family.
/// Names are bytes in ANSI; upper and lower case are the same. A handle is never used again.
///
///     desktop.registry.PutValue(root, u"Software\\Vendor", u"Folder", 1, std::string("C:\\", 4));
///
/// Calls that can fail: RegOpenKeyEx, RegCreateKeyEx, RegDeleteKey, RegDeleteValue, RegQueryValueEx, RegSetValueEx and
/// RegCloseKey, with the status as their result. The log ends each line with the status: `RegOpenKeyEx 0x80000001
/// Software\Vendor access=0x1 -> 0`.
class SimulatedRegistryStore final : public RegistryStore {
public:
    explicit SimulatedRegistryStore(World& world);
    ~SimulatedRegistryStore() override;

    KeyResult OpenKey(Handle root, TextView name, std::uint32_t access) override;
    KeyResult CreateKey(Handle root, TextView name, std::uint32_t access, bool inheritable) override;
    Status DeleteKey(Handle root, TextView name) override;
    Status DeleteValue(Handle key, TextView name) override;
    Value Query(Handle key, TextView name, std::uint32_t capacity, char fill) override;
    Status SetString(Handle key, TextView name, TextView value, std::uint32_t length) override;
    Status CloseKey(Handle key) override;

    /// A value as it is stored: type and bytes, a terminating zero included if there is one.
    struct Stored {
        std::uint32_t type = 0;
        std::string bytes;
    };

    /// Keys that are open.
    std::size_t OpenKeys() const { return mHandles.size(); }

    /// Runs before each query, as another program might.
    std::function<void()> onQuery;

    // What follows bypasses handles, rights and the log. Roots are predefined ones.

    /// Whether there is such a key; case does not matter.
    bool KeyExists(Handle root, TextView path) const;
    /// Makes the key where it is missing.
    void PutKey(Handle root, TextView path);
    /// Stores these bytes, and makes the key where it is missing.
    void PutValue(Handle root, TextView path, TextView name, std::uint32_t type, std::string bytes);
    /// The value as it is stored; null when there is none.
    const Stored* Find(Handle root, TextView path, TextView name) const;
    /// Makes the key read-only: nobody may change it, create keys below it or delete it. It must exist.
    void MakeReadOnly(Handle root, TextView path);

private:
    struct Key;
    struct OpenedKey {
        std::shared_ptr<Key> key;
        std::uint32_t access = 0;
    };
    struct KeyAccess {
        Status status = kSuccess;
        std::shared_ptr<Key> key;
    };

    /// The key behind a handle that has the rights `needed`.
    KeyAccess Resolve(Handle handle, std::uint32_t needed) const;
    KeyResult Give(const std::shared_ptr<Key>& key, std::uint32_t access);
    KeyResult Open(Handle root, const std::string& name, std::uint32_t access);
    KeyResult Create(Handle root, const std::string& name, std::uint32_t access);
    Status Delete(Handle root, const std::string& name);
    Value Read(Handle key, const std::string& name, std::uint32_t capacity, char fill) const;
    Status Write(Handle key, const std::string& name, std::string bytes);
    Status Erase(Handle key, const std::string& name);
    std::shared_ptr<Key> At(Handle root, TextView path) const;

    World& mWorld;
    std::map<Handle, std::shared_ptr<Key>> mRoots;
    std::map<Handle, OpenedKey> mHandles;
    Handle mNextHandle = 0x100;
};

}  // namespace kwo::platform::simulated
