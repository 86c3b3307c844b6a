#include "platform/simulated/simulated_registry_store.h"

#include <algorithm>
#include <stdexcept>
#include <vector>

#include "platform/simulated/error_codes.h"
#include "platform/simulated/text_codec.h"

namespace kwo::platform::simulated {
namespace {

using Status = RegistryStore::Status;

constexpr Status kNotFound = 2;
constexpr Status kBadPathName = 161;
constexpr Status kKeyDeleted = 1018;
constexpr Status kNoResources = 1450;

constexpr std::uint32_t kQueryValue = 0x1;
constexpr std::uint32_t kSetValue = 0x2;
// Set value, create subkey, create link, delete, change owner or rights, and the generic forms of these.
constexpr std::uint32_t kChanging = 0x2 | 0x4 | 0x20 | 0x10000 | 0x40000 | 0x80000 | 0x40000000 | 0x10000000;
constexpr std::uint32_t kGenericRead = 0x80000000;
constexpr std::uint32_t kGenericWrite = 0x40000000;
constexpr std::uint32_t kGenericAll = 0x10000000;
constexpr std::uint32_t kMaximumAllowed = 0x02000000;
constexpr std::uint32_t kRead = 0x20019;
constexpr std::uint32_t kWrite = 0x20006;
constexpr std::uint32_t kAllAccess = 0xF003F;

constexpr std::uint32_t kString = 1;
constexpr std::uint32_t kExpandString = 2;
constexpr std::uint32_t kMultiString = 7;

constexpr std::size_t kLongestKeyName = 255;
constexpr std::size_t kLongestValueName = 16383;

constexpr std::uint32_t kFirstRoot = 0x80000000;
constexpr std::uint32_t kLastRoot = 0x80000006;
constexpr std::uint32_t kClassesRoot = 0x80000000;

Handle AsHandle(std::uint32_t number) {
    return static_cast<Handle>(number);
}

struct Path {
    Status status = RegistryStore::kSuccess;
    std::vector<std::string> names;
};

Path Split(Handle root, const std::string& name) {
    Path path;
    // The classes root is a merged view and accepts more than the other roots.
    if (name.starts_with('\\') && root != AsHandle(kClassesRoot)) return {kBadPathName, {}};
    for (std::size_t start = 0; start < name.size();) {
        const std::size_t end = std::min(name.find('\\', start), name.size());
        if (end > start) path.names.push_back(name.substr(start, end - start));
        if (end - start > kLongestKeyName) return {kInvalidParameter, {}};
        start = end + 1;
    }
    return path;
}

bool IsText(std::uint32_t type) {
    return type == kString || type == kExpandString || type == kMultiString;
}

std::string KeyShown(Handle root, TextView name) {
    return Hex(static_cast<std::uint32_t>(root)) + " " + Shown(name);
}

}  // namespace

struct SimulatedRegistryStore::Key {
    std::map<std::string, std::shared_ptr<Key>> subkeys;  ///< by folded name, like the values
    std::map<std::string, Stored> values;
    std::weak_ptr<Key> parent;
    std::string folded;  ///< its own name below the parent; empty for a root
    bool readOnly = false;
    bool deleted = false;

    std::uint32_t Granted(std::uint32_t access) const {
        if ((access & kGenericRead) != 0) access |= kRead;
        if ((access & kGenericWrite) != 0) access |= kWrite;
        if ((access & kGenericAll) != 0) access |= kAllAccess;
        if ((access & kMaximumAllowed) != 0) access |= readOnly ? kRead : kAllAccess;
        return access;
    }
};

SimulatedRegistryStore::SimulatedRegistryStore(World& world) : mWorld(world) {
    world.faults.Declare({{"RegOpenKeyEx", {kNotFound, kAccessDenied, Faults::kNoMemory}},
                          {"RegCreateKeyEx", {kAccessDenied, kNoResources, Faults::kNoMemory}},
                          {"RegDeleteKey", {kNotFound, kAccessDenied, Faults::kNoMemory}},
                          {"RegDeleteValue", {kNotFound, kAccessDenied, Faults::kNoMemory}},
                          {"RegQueryValueEx", {kNotFound, kAccessDenied, Faults::kNoMemory}},
                          {"RegSetValueEx", {kAccessDenied, kNoResources, Faults::kNoMemory}},
                          {"RegCloseKey", {kInvalidHandle}}});
    for (std::uint32_t root = kFirstRoot; root <= kLastRoot; ++root) {
        mRoots[AsHandle(root)] = std::make_shared<Key>();
    }
}

SimulatedRegistryStore::~SimulatedRegistryStore() = default;

RegistryStore::KeyResult SimulatedRegistryStore::OpenKey(Handle root, TextView name, std::uint32_t access) {
    const Call call(mWorld, "RegOpenKeyEx");
    const KeyResult result = call.Status() ? KeyResult{*call.Status(), 0} : Open(root, AnsiArgument(name), access);
    mWorld.log.Add("RegOpenKeyEx " + KeyShown(root, name) + " access=" + Hex(access) + " -> " +
                   std::to_string(result.status));
    return result;
}

RegistryStore::KeyResult SimulatedRegistryStore::CreateKey(Handle root, TextView name, std::uint32_t access,
                                                           bool inheritable) {
    const Call call(mWorld, "RegCreateKeyEx");
    const KeyResult result = call.Status() ? KeyResult{*call.Status(), 0} : Create(root, AnsiArgument(name), access);
    mWorld.log.Add("RegCreateKeyEx " + KeyShown(root, name) + " access=" + Hex(access) +
                   (inheritable ? " inheritable -> " : " -> ") + std::to_string(result.status));
    return result;
}

RegistryStore::Status SimulatedRegistryStore::DeleteKey(Handle root, TextView name) {
    const Call call(mWorld, "RegDeleteKey");
    const Status status = call.Status() ? *call.Status() : Delete(root, AnsiArgument(name));
    mWorld.log.Add("RegDeleteKey " + KeyShown(root, name) + " -> " + std::to_string(status));
    return status;
}

RegistryStore::Status SimulatedRegistryStore::DeleteValue(Handle key, TextView name) {
    const Call call(mWorld, "RegDeleteValue");
    const Status status = call.Status() ? *call.Status() : Erase(key, AnsiArgument(name));
    mWorld.log.Add("RegDeleteValue " + KeyShown(key, name) + " -> " + std::to_string(status));
    return status;
}

RegistryStore::Value SimulatedRegistryStore::Query(Handle key, TextView name, std::uint32_t capacity, char fill) {
    const Call call(mWorld, "RegQueryValueEx");
    if (onQuery) onQuery();
    Value value = call.Status() ? Value{*call.Status(), 0, capacity, std::string(capacity, fill)}
                                : Read(key, AnsiArgument(name), capacity, fill);
    mWorld.log.Add("RegQueryValueEx " + KeyShown(key, name) + " capacity=" + std::to_string(capacity) +
                   " fill=" + Hex(static_cast<unsigned char>(fill)) + " -> " + std::to_string(value.status));
    return value;
}

RegistryStore::Status SimulatedRegistryStore::SetString(Handle key, TextView name, TextView value,
                                                        std::uint32_t length) {
    std::string bytes = ToAnsi(value, mWorld.codePage);
    // If the terminator stands directly after the given length, it is stored too.
    const bool ends = length > 0 && length <= bytes.size() && bytes[length - 1] != '\0' && bytes[length] == '\0';
    bytes.resize(length + (ends ? 1u : 0u), '\0');
    const Call call(mWorld, "RegSetValueEx");
    const Status status = call.Status() ? *call.Status() : Write(key, AnsiArgument(name), std::move(bytes));
    mWorld.log.Add("RegSetValueEx " + KeyShown(key, name) + "=" + Shown(value) + " length=" + std::to_string(length) +
                   " -> " + std::to_string(status));
    return status;
}

RegistryStore::Status SimulatedRegistryStore::CloseKey(Handle key) {
    const Call call(mWorld, "RegCloseKey");
    const bool known = mRoots.contains(key) || mHandles.contains(key);
    const Status status = call.Status() ? *call.Status() : known ? kSuccess : kInvalidHandle;
    if (status == kSuccess) mHandles.erase(key);
    mWorld.log.Add("RegCloseKey " + Hex(static_cast<std::uint32_t>(key)) + " -> " + std::to_string(status));
    return status;
}

SimulatedRegistryStore::KeyAccess SimulatedRegistryStore::Resolve(Handle handle, std::uint32_t needed) const {
    if (const auto root = mRoots.find(handle); root != mRoots.end()) {
        const bool refused = root->second->readOnly && (needed & kChanging) != 0;
        return {refused ? kAccessDenied : kSuccess, root->second};
    }
    const auto opened = mHandles.find(handle);
    if (opened == mHandles.end()) return {kInvalidHandle, nullptr};
    if ((opened->second.access & needed) != needed) return {kAccessDenied, nullptr};
    if (opened->second.key->deleted) return {kKeyDeleted, nullptr};
    return {kSuccess, opened->second.key};
}

RegistryStore::KeyResult SimulatedRegistryStore::Give(const std::shared_ptr<Key>& key, std::uint32_t access) {
    if (key->readOnly && (access & kChanging) != 0) return {kAccessDenied, 0};
    const Handle handle = mNextHandle;
    mNextHandle += 4;
    mHandles[handle] = {key, key->Granted(access)};
    return {kSuccess, handle};
}

RegistryStore::KeyResult SimulatedRegistryStore::Open(Handle root, const std::string& name, std::uint32_t access) {
    // Rights are checked on the key itself, not on the handle that leads to it.
    auto [status, key] = Resolve(root, 0);
    if (status != kSuccess) return {status, 0};
    const Path path = Split(root, name);
    if (path.status != kSuccess) return {path.status, 0};
    for (const std::string& step : path.names) {
        const auto next = key->subkeys.find(Folded(step));
        if (next == key->subkeys.end()) return {kNotFound, 0};
        key = next->second;
    }
    return Give(key, access);
}

RegistryStore::KeyResult SimulatedRegistryStore::Create(Handle root, const std::string& name, std::uint32_t access) {
    auto [status, key] = Resolve(root, 0);
    if (status != kSuccess) return {status, 0};
    const Path path = Split(root, name);
    if (path.status != kSuccess) return {path.status, 0};
    for (const std::string& step : path.names) {
        const std::string folded = Folded(step);
        auto next = key->subkeys.find(folded);
        if (next == key->subkeys.end()) {
            if (key->readOnly) return {kAccessDenied, 0};
            next = key->subkeys.emplace(folded, std::make_shared<Key>()).first;
            next->second->parent = key;
            next->second->folded = folded;
        }
        key = next->second;
    }
    return Give(key, access);
}

RegistryStore::Status SimulatedRegistryStore::Delete(Handle root, const std::string& name) {
    const KeyResult opened = Open(root, name, 0x10000);
    if (opened.status != kSuccess) return opened.status;
    const std::shared_ptr<Key> key = mHandles.at(opened.key).key;
    mHandles.erase(opened.key);
    const std::shared_ptr<Key> parent = key->parent.lock();
    if (parent == nullptr || !key->subkeys.empty()) return kAccessDenied;
    key->deleted = true;
    parent->subkeys.erase(key->folded);
    return kSuccess;
}

RegistryStore::Value SimulatedRegistryStore::Read(Handle handle, const std::string& name, std::uint32_t capacity,
                                                  char fill) const {
    Value value{kSuccess, 0, capacity, std::string(capacity, fill)};
    const auto [status, key] = Resolve(handle, kQueryValue);
    value.status = status;
    if (status != kSuccess) return value;
    const auto stored = key->values.find(Folded(name));
    if (stored == key->values.end()) {
        value.status = kNotFound;
        return value;
    }
    const std::string& bytes = stored->second.bytes;
    value.type = stored->second.type;
    value.length = static_cast<std::uint32_t>(bytes.size());
    if (bytes.size() > capacity) {
        value.status = kMoreData;
        return value;
    }
    std::copy(bytes.begin(), bytes.end(), value.bytes.begin());
    // A string stored without its terminator gets one if there is room; the reported length does not count it.
    const bool unterminated = IsText(value.type) && !bytes.empty() && bytes.back() != '\0';
    if (unterminated && bytes.size() < capacity) value.bytes[bytes.size()] = '\0';
    return value;
}

RegistryStore::Status SimulatedRegistryStore::Write(Handle handle, const std::string& name, std::string bytes) {
    const auto [status, key] = Resolve(handle, kSetValue);
    if (status != kSuccess) return status;
    if (name.size() > kLongestValueName) return kInvalidParameter;
    key->values[Folded(name)] = {kString, std::move(bytes)};
    return kSuccess;
}

RegistryStore::Status SimulatedRegistryStore::Erase(Handle handle, const std::string& name) {
    const auto [status, key] = Resolve(handle, kSetValue);
    if (status != kSuccess) return status;
    return key->values.erase(Folded(name)) > 0 ? kSuccess : kNotFound;
}

bool SimulatedRegistryStore::KeyExists(Handle root, TextView path) const {
    return At(root, path) != nullptr;
}

void SimulatedRegistryStore::PutKey(Handle root, TextView path) {
    const KeyResult made = Create(root, AnsiArgument(path), 0);
    if (made.status != kSuccess) throw std::invalid_argument("no such key can be made");
    mHandles.erase(made.key);
}

void SimulatedRegistryStore::PutValue(Handle root, TextView path, TextView name, std::uint32_t type,
                                      std::string bytes) {
    PutKey(root, path);
    At(root, path)->values[Folded(AnsiArgument(name))] = {type, std::move(bytes)};
}

const SimulatedRegistryStore::Stored* SimulatedRegistryStore::Find(Handle root, TextView path, TextView name) const {
    const auto key = At(root, path);
    if (key == nullptr) return nullptr;
    const auto stored = key->values.find(Folded(AnsiArgument(name)));
    return stored == key->values.end() ? nullptr : &stored->second;
}

void SimulatedRegistryStore::MakeReadOnly(Handle root, TextView path) {
    const auto key = At(root, path);
    if (key == nullptr) throw std::invalid_argument("no such key");
    key->readOnly = true;
}

std::shared_ptr<SimulatedRegistryStore::Key> SimulatedRegistryStore::At(Handle root, TextView path) const {
    std::shared_ptr<Key> key = mRoots.at(root);
    for (const std::string& step : Split(root, AnsiArgument(path)).names) {
        const auto next = key->subkeys.find(Folded(step));
        if (next == key->subkeys.end()) return nullptr;
        key = next->second;
    }
    return key;
}

}  // namespace kwo::platform::simulated
