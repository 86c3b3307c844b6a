#include "com/server/registry_changes.h"

#include "com/server/registration_failure.h"

namespace kwo::com {

RegistryChanges::~RegistryChanges() {
    for (auto change = mChanges.rbegin(); change != mChanges.rend(); ++change) {
        try {
            UndoOne(*change);
        } catch (...) {
            // The first failure is the one that is reported. The other changes are still undone.
        }
    }
}

void RegistryChanges::UndoOne(const Change& change) {
    bool created = false;
    switch (change.undo) {
        case Undo::kNothing:
            break;
        case Undo::kDeleteKey:
            static_cast<void>(mStore.DeleteKey(change.path));
            break;
        case Undo::kCreateKey:
            static_cast<void>(mStore.CreateKey(change.path, created));
            break;
        case Undo::kDeleteValue:
            static_cast<void>(mStore.DeleteValue(change.path, change.name));
            break;
        case Undo::kSetValue:
            static_cast<void>(mStore.SetValue(change.path, change.name, change.before));
            break;
    }
}

void RegistryChanges::CreateKey(const std::wstring& path) {
    for (std::size_t end = path.find(L'\\'); end != std::wstring::npos; end = path.find(L'\\', end + 1)) {
        CreateOneKey(path.substr(0, end));
    }
    CreateOneKey(path);
}

void RegistryChanges::SetValue(const std::wstring& path, const std::wstring& name, const StoredValue& value) {
    StoredValue before;
    const LSTATUS found = mStore.GetValue(path, name, before);
    if (found == ERROR_FILE_NOT_FOUND) {
        mChanges.push_back({Undo::kDeleteValue, path, name, {}});
    } else {
        ThrowIfStatus(found);
        mChanges.push_back({Undo::kSetValue, path, name, before});
    }
    ThrowIfStatus(mStore.SetValue(path, name, value));
}

void RegistryChanges::DeleteValue(const std::wstring& path, const std::wstring& name) {
    StoredValue before;
    const LSTATUS found = mStore.GetValue(path, name, before);
    if (found == ERROR_FILE_NOT_FOUND) return;
    ThrowIfStatus(found);
    mChanges.push_back({Undo::kSetValue, path, name, before});
    ThrowIfStatus(mStore.DeleteValue(path, name));
}

void RegistryChanges::DeleteKeyIfEmpty(const std::wstring& path) {
    bool empty = false;
    const LSTATUS found = mStore.IsEmpty(path, empty);
    if (found == ERROR_FILE_NOT_FOUND) return;
    ThrowIfStatus(found);
    if (!empty) return;
    mChanges.push_back({Undo::kCreateKey, path, {}, {}});
    ThrowIfStatus(mStore.DeleteKey(path));
}

void RegistryChanges::CreateOneKey(const std::wstring& path) {
    if (mPresent.contains(path)) return;
    // Everything that may run out of memory is done before the key is created, so that a created key is always on the
    // list.
    mPresent.insert(path);
    mChanges.push_back({Undo::kNothing, path, {}, {}});
    const auto note = mCreated.insert(path).first;
    bool created = false;
    const LSTATUS status = mStore.CreateKey(path, created);
    if (status == ERROR_SUCCESS && created) {
        mChanges.back().undo = Undo::kDeleteKey;
    } else {
        mCreated.erase(note);
    }
    ThrowIfStatus(status);
}

}  // namespace kwo::com
