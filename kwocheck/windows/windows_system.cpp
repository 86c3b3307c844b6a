#include "kwocheck/windows/windows_system.h"

#include <algorithm>
#include <utility>

#include "com_support/bstr.h"
#include "com_support/module_path.h"
#include "kwocheck/file_formats.h"
#include "kwocheck/windows/object_creation.h"
#include "kwocheck/words.h"

namespace kwocheck {

using kwo::com_support::TextOf;

namespace {

constexpr Bitness kOwn = sizeof(void*) == 8 ? Bitness::k64 : Bitness::k32;

const wchar_t* Wide(const Text& text) {
    return reinterpret_cast<const wchar_t*>(text.c_str());
}

/// Owns a file or a token.
class Handle {
public:
    explicit Handle(HANDLE handle) : mHandle(handle) {}
    ~Handle() {
        if (*this) ::CloseHandle(mHandle);
    }
    Handle(const Handle&) = delete;
    Handle& operator=(const Handle&) = delete;
    explicit operator bool() const { return mHandle != nullptr && mHandle != INVALID_HANDLE_VALUE; }
    HANDLE Get() const { return mHandle; }

private:
    HANDLE mHandle;
};

class Key {
public:
    /// A key of classes, as programs of that bitness see it.
    Key(Scope root, TextView path, Bitness view, REGSAM rights)
        : mStatus(::RegOpenKeyExW(root == Scope::kUser ? HKEY_CURRENT_USER : HKEY_LOCAL_MACHINE,
                                  Wide(u"Software\\Classes\\" + Text(path)), 0,
                                  rights | (view == Bitness::k64 ? KEY_WOW64_64KEY : KEY_WOW64_32KEY), &mKey)) {}
    ~Key() {
        if (mStatus == ERROR_SUCCESS) ::RegCloseKey(mKey);
    }
    Key(const Key&) = delete;
    Key& operator=(const Key&) = delete;
    LSTATUS Status() const { return mStatus; }
    HKEY Get() const { return mKey; }

private:
    HKEY mKey = nullptr;
    LSTATUS mStatus;
};

/// A module that is mapped to read its resources. None of its code runs.
class Resources {
public:
    explicit Resources(const Text& path) : mModule(::LoadLibraryExW(Wide(path), nullptr, LOAD_LIBRARY_AS_DATAFILE)) {}
    ~Resources() {
        if (mModule != nullptr) ::FreeLibrary(mModule);
    }
    Resources(const Resources&) = delete;
    Resources& operator=(const Resources&) = delete;

    /// Empty if there is none. Valid as long as this object.
    std::string_view Version() const {
        HRSRC const found = mModule != nullptr ? ::FindResourceW(mModule, MAKEINTRESOURCEW(1), RT_VERSION) : nullptr;
        HGLOBAL const loaded = found != nullptr ? ::LoadResource(mModule, found) : nullptr;
        const void* const bytes = loaded != nullptr ? ::LockResource(loaded) : nullptr;
        if (bytes == nullptr) return {};
        return {static_cast<const char*>(bytes), ::SizeofResource(mModule, found)};
    }

private:
    HMODULE mModule;
};

Text Expanded(const std::wstring& text) {
    std::wstring expanded(::ExpandEnvironmentStringsW(text.c_str(), nullptr, 0), L'\0');
    const DWORD length =
        ::ExpandEnvironmentStringsW(text.c_str(), expanded.data(), static_cast<DWORD>(expanded.size()));
    expanded.resize(length > 0 && length <= expanded.size() ? length - 1 : 0);
    return TextOf(expanded);
}

RegistryText Failed(LSTATUS status) {
    return {status == ERROR_ACCESS_DENIED ? RegistryText::State::kDenied : RegistryText::State::kMissing, {}};
}

Text WindowsVersion() {
    using GetVersion = LONG(WINAPI*)(OSVERSIONINFOW*);
    const HMODULE system = ::GetModuleHandleW(L"ntdll.dll");
    const auto get = reinterpret_cast<GetVersion>(reinterpret_cast<void*>(::GetProcAddress(system, "RtlGetVersion")));
    OSVERSIONINFOW info{};
    info.dwOSVersionInfoSize = sizeof info;
    if (get == nullptr || get(&info) != 0) return u"of unknown version";
    return Decimal(info.dwMajorVersion) + u"." + Decimal(info.dwMinorVersion) + u"." + Decimal(info.dwBuildNumber);
}

bool IsWindows64() {
    BOOL is64 = sizeof(void*) == 8;
    if (is64 == FALSE && ::IsWow64Process(::GetCurrentProcess(), &is64) == FALSE) return false;
    return is64 != FALSE;
}

/// The system ignores what is registered for the user in such a program.
bool IsElevated() {
    HANDLE opened = nullptr;
    if (::OpenProcessToken(::GetCurrentProcess(), TOKEN_QUERY, &opened) == FALSE) return false;
    const Handle token(opened);
    alignas(TOKEN_MANDATORY_LABEL) BYTE label[sizeof(TOKEN_MANDATORY_LABEL) + SECURITY_MAX_SID_SIZE];
    DWORD size = 0;
    if (::GetTokenInformation(token.Get(), TokenIntegrityLevel, label, sizeof label, &size) == FALSE) return false;
    const PSID level = reinterpret_cast<const TOKEN_MANDATORY_LABEL*>(label)->Label.Sid;
    return *::GetSidSubAuthority(level, *::GetSidSubAuthorityCount(level) - 1u) >= SECURITY_MANDATORY_HIGH_RID;
}

Text WindowsFolder() {
    wchar_t folder[MAX_PATH] = {};
    const UINT length = ::GetSystemWindowsDirectoryW(folder, MAX_PATH);
    return TextOf({folder, length < MAX_PATH ? length : 0});
}

/// A name without a folder is looked for where the loader looks; other paths stay.
Text Located(const Text& path) {
    if (path.find(u'\\') != Text::npos || path.find(u'/') != Text::npos) return path;
    wchar_t found[MAX_PATH] = {};
    const DWORD length = ::SearchPathW(nullptr, Wide(path), nullptr, MAX_PATH, found, nullptr);
    return length > 0 && length < MAX_PATH ? TextOf({found, length}) : path;
}

FileFacts::State StateOf(DWORD error) {
    switch (error) {
        case ERROR_ACCESS_DENIED:
        case ERROR_SHARING_VIOLATION:
            return FileFacts::State::kDenied;
        default:
            return FileFacts::State::kMissing;
    }
}

}  // namespace

WindowsSystem::WindowsSystem(TextView version) : mWindowsFolder(WindowsFolder()) {
    const Text program = TextOf(kwo::com_support::ModulePath(nullptr));
    mHere = {kOwn,          IsWindows64(),
             IsElevated(),  WindowsVersion(),
             Text(version), program.substr(0, program.find_last_of(u'\\') + 1)};
}

RegistryText WindowsSystem::ReadClasses(Scope root, Bitness view, TextView key, TextView value) {
    const Key opened(root, key, view, KEY_QUERY_VALUE);
    if (opened.Status() != ERROR_SUCCESS) return Failed(opened.Status());
    const Text name(value);
    DWORD type = 0;
    DWORD bytes = 0;
    LSTATUS status = ::RegQueryValueExW(opened.Get(), Wide(name), nullptr, &type, nullptr, &bytes);
    if (status == ERROR_SUCCESS && type != REG_SZ && type != REG_EXPAND_SZ) return {};
    // One more character, because the stored text may have no zero at its end.
    std::wstring text(bytes / sizeof(wchar_t) + 1, L'\0');
    if (status == ERROR_SUCCESS) {
        status = ::RegQueryValueExW(opened.Get(), Wide(name), nullptr, nullptr, reinterpret_cast<BYTE*>(text.data()),
                                    &bytes);
    }
    if (status != ERROR_SUCCESS) return Failed(status);
    text.resize(std::wcslen(text.c_str()));
    return {RegistryText::State::kThere, type == REG_EXPAND_SZ ? Expanded(text) : TextOf(text)};
}

std::vector<Text> WindowsSystem::KeysBelow(Scope root, Bitness view, TextView key) {
    const Key opened(root, key, view, KEY_ENUMERATE_SUB_KEYS);
    std::vector<Text> names;
    if (opened.Status() != ERROR_SUCCESS) return names;
    wchar_t name[256];
    DWORD length = 256;
    for (DWORD at = 0;
         ::RegEnumKeyExW(opened.Get(), at, name, &length, nullptr, nullptr, nullptr, nullptr) == ERROR_SUCCESS;
         ++at, length = 256)
        names.push_back(TextOf({name, length}));
    return names;
}

FileFacts WindowsSystem::Examine(TextView path, Bitness view) {
    FileFacts facts;
    // Windows accepts paths in quotation marks here.
    if (path.size() >= 2 && path.front() == u'"' && path.back() == u'"') path = path.substr(1, path.size() - 2);
    const Text file = RedirectedPath(Located(Text(path)), mWindowsFolder, kOwn, view);
    facts.path = file;
    constexpr std::size_t kHeaders = 4096;
    std::string bytes;
    facts.state = Read(file, kHeaders, bytes);
    if (facts.state != FileFacts::State::kThere) return facts;
    facts.bitness = BitnessOf(bytes);
    const VersionFacts version = ReadVersionResource(Resources(file).Version());
    facts.product = version.product;
    facts.version = version.version;
    std::string zone;
    const bool hasZone = Read(file + u":Zone.Identifier", kHeaders, zone) == FileFacts::State::kThere;
    facts.isBlocked = hasZone && IsZoneMark(zone);
    return facts;
}

FileFacts::State WindowsSystem::Read(TextView path, std::size_t most, std::string& bytes) {
    const Text name(path);
    const DWORD attributes = ::GetFileAttributesW(Wide(name));
    if (attributes == INVALID_FILE_ATTRIBUTES) return StateOf(::GetLastError());
    if ((attributes & FILE_ATTRIBUTE_DIRECTORY) != 0) return FileFacts::State::kMissing;
    const Handle file(::CreateFileW(Wide(name), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                                    nullptr, OPEN_EXISTING, FILE_FLAG_SEQUENTIAL_SCAN, nullptr));
    if (!file) return StateOf(::GetLastError());
    LARGE_INTEGER size{};
    if (::GetFileType(file.Get()) != FILE_TYPE_DISK || ::GetFileSizeEx(file.Get(), &size) == FALSE) {
        return FileFacts::State::kMissing;
    }
    bytes.resize(static_cast<std::size_t>(std::min<LONGLONG>(size.QuadPart, static_cast<LONGLONG>(most))));
    DWORD read = 0;
    if (::ReadFile(file.Get(), bytes.data(), static_cast<DWORD>(bytes.size()), &read, nullptr) == FALSE) {
        return FileFacts::State::kDenied;
    }
    bytes.resize(read);
    return FileFacts::State::kThere;
}

Creation WindowsSystem::Create(const KnownClass& known) {
    return CreateAndCall(known);
}

}  // namespace kwocheck
