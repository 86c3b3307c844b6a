#include "com/server/registry_changes.h"

#include "com/server/registration_failure.h"

namespace kwo::com {

RegistryChanges::~RegistryChanges() {
    for (auto undo = mUndo.rbegin(); undo != mUndo.rend(); ++undo) {
        try {
            (*undo)();
        } catch (...) {
            // The first failure is the one that is reported. The other changes are still undone.
        }
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
        mUndo.emplace_back([this, path, name] { static_cast<void>(mStore.DeleteValue(path, name)); });
    } else {
        ThrowIfStatus(found);
        mUndo.emplace_back([this, path, name, before] { static_cast<void>(mStore.SetValue(path, name, before)); });
    }
    ThrowIfStatus(mStore.SetValue(path, name, value));
}

void RegistryChanges::DeleteValue(const std::wstring& path, const std::wstring& name) {
    StoredValue before;
    const LSTATUS found = mStore.GetValue(path, name, before);
    if (found == ERROR_FILE_NOT_FOUND) return;
    ThrowIfStatus(found);
    mUndo.emplace_back([this, path, name, before] { static_cast<void>(mStore.SetValue(path, name, before)); });
    ThrowIfStatus(mStore.DeleteValue(path, name));
}

void RegistryChanges::DeleteKeyIfEmpty(const std::wstring& path) {
    bool empty = false;
    const LSTATUS found = mStore.IsEmpty(path, empty);
    if (found == ERROR_FILE_NOT_FOUND) return;
    ThrowIfStatus(found);
    if (!empty) return;
    mUndo.emplace_back([this, path] {
        bool created = false;
        static_cast<void>(mStore.CreateKey(path, created));
    });
    ThrowIfStatus(mStore.DeleteKey(path));
}

void RegistryChanges::CreateOneKey(const std::wstring& path) {
    if (mPresent.contains(path)) return;
    // Everything that may run out of memory is done before the key is created, so that a created key is always on the
    // list.
    mPresent.insert(path);
    mUndo.emplace_back([] {});
    std::function<void()> undo = [this, path] { static_cast<void>(mStore.DeleteKey(path)); };
    const auto note = mCreated.insert(path).first;
    bool created = false;
    const LSTATUS status = mStore.CreateKey(path, created);
    if (status == ERROR_SUCCESS && created) {
        mUndo.back().swap(undo);
    } else {
        mCreated.erase(note);
    }
    ThrowIfStatus(status);
}

}  // namespace kwo::com
