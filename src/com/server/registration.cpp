#include "com/server/registration.h"

#include <algorithm>
#include <new>
#include <vector>

#include "com/server/registration_failure.h"
#include "com/server/registry_changes.h"
#include "com/server/server_description.h"

namespace kwo::com {
namespace {

constexpr wchar_t kClassesKey[] = L"Software\\Classes";
/// Which shared keys did not exist before, so that unregistering can remove them.
constexpr wchar_t kKeysMade[] = L"KeysMade";
/// The value that a key of a programmatic identifier had before it got ours.
constexpr wchar_t kReplaced[] = L"Replaced";

struct Value {
    std::wstring name;
    std::wstring text;
};

/// A key with the values to write. Lists name a parent before its children.
struct Key {
    std::wstring path;
    std::vector<Value> values;
};

template <class Body>
HRESULT ResultOf(Body&& body) noexcept {
    try {
        return body();
    } catch (const RegistrationFailure& failure) {
        return failure.reason;
    } catch (const std::bad_alloc&) {
        return E_OUTOFMEMORY;
    } catch (...) {
        return E_UNEXPECTED;
    }
}

/// Where a server's keys are, below the key of all classes.
class Layout {
public:
    Layout(ServerDescription server, std::wstring classes) : mServer(std::move(server)), mClasses(std::move(classes)) {}

    [[nodiscard]] const ServerDescription& Server() const { return mServer; }

    [[nodiscard]] std::wstring Path(const std::wstring& relative) const {
        return relative.empty() ? mClasses : mClasses + L"\\" + relative;
    }
    [[nodiscard]] std::wstring ClassPath(const ServerDescription::Class& one) const {
        return Path(L"CLSID\\" + one.clsid);
    }
    [[nodiscard]] std::wstring ModulePathKey(const ServerDescription::Class& one) const {
        return ClassPath(one) + L"\\InprocServer32";
    }
    /// Where another vendor's server of the same class is registered as a program.
    [[nodiscard]] std::wstring ProgramPathKey(const ServerDescription::Class& one) const {
        return ClassPath(one) + L"\\LocalServer32";
    }
    [[nodiscard]] std::wstring ProgIdClassKey(const ServerDescription::Class& one) const {
        return Path(one.progId) + L"\\CLSID";
    }
    [[nodiscard]] std::wstring InterfacePath(const ServerDescription::Interface& one) const {
        return Path(L"Interface\\" + one.iid);
    }
    [[nodiscard]] std::wstring VersionPath() const {
        return Path(L"TypeLib\\" + mServer.libraryId + L"\\" + mServer.version);
    }
    [[nodiscard]] std::wstring LocalePath() const { return VersionPath() + L"\\" + mServer.locale; }
    [[nodiscard]] std::wstring PlatformPath() const { return LocalePath() + L"\\" + mServer.platform; }

    [[nodiscard]] std::vector<Key> LibraryKeys() const {
        return {{Path(L"TypeLib\\" + mServer.libraryId), {}},
                {VersionPath(), {{L"", mServer.libraryText}}},
                {VersionPath() + L"\\FLAGS", {{L"", mServer.flags}}},
                {VersionPath() + L"\\HELPDIR", {{L"", mServer.moduleFolder}}},
                {LocalePath(), {}}};
    }
    [[nodiscard]] std::vector<Key> PlatformKeys() const { return {{PlatformPath(), {{L"", mServer.modulePath}}}}; }
    [[nodiscard]] std::vector<Key> InterfaceKeys(const ServerDescription::Interface& one) const {
        const std::wstring key = InterfacePath(one);
        return {{key, {{L"", one.name}}},
                {key + L"\\ProxyStubClsid32", {{L"", one.proxyStub}}},
                {key + L"\\TypeLib", {{L"", mServer.libraryId}, {L"Version", mServer.version}}}};
    }
    [[nodiscard]] std::vector<Key> ClassKeys(const ServerDescription::Class& one) const {
        const std::wstring key = ClassPath(one);
        return {{key, {{L"", one.progId}}},
                {ModulePathKey(one), {{L"", mServer.modulePath}, {L"ThreadingModel", L"Apartment"}}},
                {key + L"\\ProgID", {{L"", one.progId}}},
                {key + L"\\Programmable", {}},
                {key + L"\\TypeLib", {{L"", mServer.libraryId}}},
                {key + L"\\Version", {{L"", mServer.version}}}};
    }
    [[nodiscard]] std::vector<Key> ProgIdKeys(const ServerDescription::Class& one) const {
        return {{Path(one.progId), {{L"", one.progId}}}, {ProgIdClassKey(one), {{L"", one.clsid}}}};
    }

private:
    ServerDescription mServer;
    std::wstring mClasses;
};

/// A key that other software uses too, relative to the key of all classes, with its name in our record. Some of these
/// keys exist twice, once for each bitness.
struct SharedKey {
    std::wstring path;
    std::wstring recordName;
    bool perBitness;
};

/// In the order of removal: children before parents.
std::vector<SharedKey> SharedKeys(const std::wstring& platform) {
    return {{L"CLSID", L"CLSID " + platform, true},
            {L"Interface", L"Interface " + platform, true},
            {L"TypeLib", L"TypeLib", false},
            {L"", L"Classes", false}};
}

std::vector<std::wstring> SplitRecord(const std::wstring& text) {
    std::vector<std::wstring> names;
    for (std::size_t start = 0; start < text.size();) {
        const std::size_t end = std::min(text.find(L';', start), text.size());
        names.push_back(text.substr(start, end - start));
        start = end + 1;
    }
    return names;
}

std::wstring JoinRecord(const std::vector<std::wstring>& names) {
    std::wstring text;
    for (const std::wstring& name : names)
        text += (text.empty() ? L"" : L";") + name;
    return text;
}

bool Contains(const std::vector<std::wstring>& names, const std::wstring& name) {
    return std::find(names.begin(), names.end(), name) != names.end();
}

/// The text of a value; empty if there is none.
std::wstring TextAt(RegistrationStore& store, const std::wstring& path, const std::wstring& name = L"") {
    StoredValue value;
    return store.GetValue(path, name, value) == ERROR_SUCCESS ? value.Text() : L"";
}

/// Compares as the registry and the file system do, without regard to case.
bool AreSame(const std::wstring& one, const std::wstring& other) {
    return CompareStringOrdinal(one.c_str(), -1, other.c_str(), -1, TRUE) == CSTR_EQUAL;
}

/// The path without short names, as far as the system knows it.
std::wstring LongPath(const std::wstring& path) {
    std::wstring found(::GetLongPathNameW(path.c_str(), nullptr, 0), L'\0');
    found.resize(::GetLongPathNameW(path.c_str(), found.data(), static_cast<DWORD>(found.size())));
    return found.empty() ? path : found;
}

/// Compares what is registered with what is ours: the same, or paths of the same file or folder.
/// Others may write a path with quotation marks or short names.
bool MeanTheSame(std::wstring registered, const std::wstring& ours) {
    std::erase(registered, L'"');
    return AreSame(registered, ours) || AreSame(LongPath(registered), LongPath(ours));
}

/// True if a registration names this file, or no file, which is the rest of a damaged one.
bool OursOrNobodys(std::wstring registered, const ServerDescription& server) {
    return registered.empty() || MeanTheSame(std::move(registered), server.modulePath);
}

void Write(RegistryChanges& changes, const std::vector<Key>& keys) {
    for (const Key& key : keys) {
        changes.CreateKey(key.path);
        for (const Value& value : key.values) {
            changes.SetValue(key.path, value.name, StoredValue::OfText(value.text));
        }
    }
}

void RecordKeysMade(RegistryChanges& changes, RegistrationStore& store, const Layout& layout) {
    std::vector<std::wstring> made = SplitRecord(TextAt(store, layout.VersionPath(), kKeysMade));
    const std::size_t before = made.size();
    for (const SharedKey& key : SharedKeys(layout.Server().platform)) {
        if (changes.Created(layout.Path(key.path))) made.push_back(key.recordName);
    }
    if (made.size() == before) return;
    changes.SetValue(layout.VersionPath(), kKeysMade, StoredValue::OfText(JoinRecord(made)));
}

/// Removes each listed value that still reads as it was written, and then each key that is empty.
void Remove(RegistryChanges& changes, RegistrationStore& store, const std::vector<Key>& keys) {
    for (auto key = keys.rbegin(); key != keys.rend(); ++key) {
        for (const Value& value : key->values) {
            if (MeanTheSame(TextAt(store, key->path, value.name), value.text))
                changes.DeleteValue(key->path, value.name);
        }
        changes.DeleteKeyIfEmpty(key->path);
    }
}

/// Remembers the class and the description that the programmatic identifier had before, so that it gets them back when
/// ours is unregistered.
void RememberReplaced(RegistryChanges& changes, RegistrationStore& store, const Layout& layout,
                      const ServerDescription::Class& one) {
    const std::wstring nameKey = layout.Path(one.progId);
    const std::wstring classKey = layout.ProgIdClassKey(one);
    StoredValue classBefore;
    StoredValue textBefore;  // REG_NONE if there was none
    const bool otherClass =
        store.GetValue(classKey, L"", classBefore) == ERROR_SUCCESS && !AreSame(classBefore.Text(), one.clsid);
    const bool otherText =
        store.GetValue(nameKey, L"", textBefore) == ERROR_SUCCESS && !AreSame(textBefore.Text(), one.progId);
    if (otherClass) changes.SetValue(classKey, kReplaced, classBefore);
    if (otherClass || otherText) changes.SetValue(nameKey, kReplaced, textBefore);
}

/// Gives back what RememberReplaced remembered, unless there is another value by now.
void RestoreReplaced(RegistryChanges& changes, RegistrationStore& store, const std::wstring& key) {
    StoredValue before;
    if (store.GetValue(key, kReplaced, before) != ERROR_SUCCESS) return;
    StoredValue now;
    const bool isFree = store.GetValue(key, L"", now) == ERROR_FILE_NOT_FOUND;
    if (isFree && before.type != REG_NONE) changes.SetValue(key, L"", before);
    changes.DeleteValue(key, kReplaced);
}

/// If another class has the identifier by now, nothing is changed.
void RemoveProgId(RegistryChanges& changes, RegistrationStore& store, const Layout& layout,
                  const ServerDescription::Class& one) {
    const std::wstring nameKey = layout.Path(one.progId);
    const std::wstring classKey = layout.ProgIdClassKey(one);
    if (!AreSame(TextAt(store, classKey), one.clsid)) {
        changes.DeleteValue(classKey, kReplaced);
        changes.DeleteValue(nameKey, kReplaced);
        return;
    }
    // A key with a remembered value is not empty, so it stays.
    Remove(changes, store, layout.ProgIdKeys(one));
    RestoreReplaced(changes, store, classKey);
    RestoreReplaced(changes, store, nameKey);
}

void RemoveClasses(RegistryChanges& changes, RegistrationStore& store, const Layout& layout) {
    for (const ServerDescription::Class& one : layout.Server().classes) {
        if (!OursOrNobodys(TextAt(store, layout.ModulePathKey(one)), layout.Server())) continue;
        if (!TextAt(store, layout.ProgramPathKey(one)).empty()) continue;
        Remove(changes, store, layout.ClassKeys(one));
        // The programmatic identifier serves both bitnesses.
        if (!store.OtherBitnessHas(layout.ModulePathKey(one))) RemoveProgId(changes, store, layout, one);
    }
}

void RemoveInterfaces(RegistryChanges& changes, RegistrationStore& store, const Layout& layout) {
    for (const ServerDescription::Interface& one : layout.Server().interfaces) {
        const std::wstring library = layout.InterfacePath(one) + L"\\TypeLib";
        const bool ours = TextAt(store, library) == layout.Server().libraryId &&
                          TextAt(store, library, L"Version") == layout.Server().version;
        if (ours) Remove(changes, store, layout.InterfaceKeys(one));
    }
}

bool IsMissing(RegistrationStore& store, const std::wstring& path) {
    bool empty = false;
    return store.IsEmpty(path, empty) == ERROR_FILE_NOT_FOUND;
}

/// Removes the library of this bitness. If the other bitness is not registered, removes the whole library, and the
/// shared keys that we created and nobody uses.
void RemoveLibrary(RegistryChanges& changes, RegistrationStore& store, const Layout& layout) {
    const std::vector<std::wstring> made = SplitRecord(TextAt(store, layout.VersionPath(), kKeysMade));
    Remove(changes, store, layout.PlatformKeys());
    changes.DeleteKeyIfEmpty(layout.LocalePath());
    const bool last = IsMissing(store, layout.LocalePath());
    if (last) {
        changes.DeleteValue(layout.VersionPath(), kKeysMade);
        Remove(changes, store, layout.LibraryKeys());
    }

    std::vector<std::wstring> left = made;
    for (const SharedKey& key : SharedKeys(layout.Server().platform)) {
        if (!Contains(made, key.recordName)) continue;
        changes.DeleteKeyIfEmpty(layout.Path(key.path));
        if (key.perBitness) std::erase(left, key.recordName);
    }
    if (!last && left != made) {
        changes.SetValue(layout.VersionPath(), kKeysMade, StoredValue::OfText(JoinRecord(left)));
    }
}

HKEY RootOf(Scope scope) {
    return scope == Scope::kUser ? HKEY_CURRENT_USER : HKEY_LOCAL_MACHINE;
}

}  // namespace

HRESULT Register(HINSTANCE module, Scope scope) noexcept {
    return ResultOf([&] {
        WindowsRegistrationStore store(RootOf(scope));
        return Register(module, store, kClassesKey);
    });
}

HRESULT Unregister(HINSTANCE module, Scope scope) noexcept {
    return ResultOf([&] {
        WindowsRegistrationStore store(RootOf(scope));
        return Unregister(module, store, kClassesKey);
    });
}

HRESULT Register(HINSTANCE module, RegistrationStore& store, const std::wstring& classes) noexcept {
    return ResultOf([&] {
        const Layout layout(DescribeServer(module), classes);
        RegistryChanges changes(store);
        Write(changes, layout.LibraryKeys());
        Write(changes, layout.PlatformKeys());
        for (const auto& one : layout.Server().interfaces)
            Write(changes, layout.InterfaceKeys(one));
        for (const auto& one : layout.Server().classes) {
            Write(changes, layout.ClassKeys(one));
            RememberReplaced(changes, store, layout, one);
            Write(changes, layout.ProgIdKeys(one));
        }
        RecordKeysMade(changes, store, layout);
        changes.Keep();
        return S_OK;
    });
}

HRESULT Unregister(HINSTANCE module, RegistrationStore& store, const std::wstring& classes) noexcept {
    return ResultOf([&] {
        const Layout layout(DescribeServer(module), classes);
        RegistryChanges changes(store);
        RemoveClasses(changes, store, layout);
        if (OursOrNobodys(TextAt(store, layout.PlatformPath()), layout.Server())) {
            RemoveInterfaces(changes, store, layout);
            RemoveLibrary(changes, store, layout);
        }
        changes.Keep();
        return S_OK;
    });
}

}  // namespace kwo::com
