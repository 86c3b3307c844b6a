#include "registry_snapshot.h"

#include <fstream>
#include <iterator>
#include <string_view>

#include "temporary_folder.h"

namespace kwo::test_support {
namespace {

/// The desktop keeps the user's views of folders there, and changes them at any time.
bool IsChanging(const std::wstring& path) {
    constexpr wchar_t kChanging[] = L"\\Local Settings";
    constexpr int kLength = static_cast<int>(std::size(kChanging)) - 1;
    const bool isWhole = path.size() == kLength || (path.size() > kLength && path[kLength] == L'\\');
    return isWhole && CompareStringOrdinal(path.c_str(), kLength, kChanging, kLength, TRUE) == CSTR_EQUAL;
}

std::string Text(DWORD type, const std::vector<BYTE>& bytes, DWORD size) {
    static constexpr char kDigits[] = "0123456789abcdef";
    std::string text = std::to_string(type) + ' ';
    for (DWORD i = 0; i < size; ++i) {
        text += kDigits[bytes[i] >> 4];
        text += kDigits[bytes[i] & 15];
    }
    return text;
}

/// Reads an open key, value by value. Its children are opened by their names: a whole path is slow to open.
void Walk(HKEY key, const std::wstring& path, REGSAM view, RegistrySnapshot& snapshot) {
    DWORD keys = 0, longestKey = 0, values = 0, longestName = 0, mostBytes = 0;
    if (RegQueryInfoKeyW(key, nullptr, nullptr, nullptr, &keys, &longestKey, nullptr, &values, &longestName, &mostBytes,
                         nullptr, nullptr) != ERROR_SUCCESS) {
        return;
    }
    snapshot[path];
    std::wstring name((longestKey > longestName ? longestKey : longestName) + 1, L'\0');
    std::vector<BYTE> bytes(mostBytes);
    for (DWORD index = 0; index < values; ++index) {
        auto length = static_cast<DWORD>(name.size());
        DWORD type = 0, size = mostBytes;
        if (RegEnumValueW(key, index, name.data(), &length, nullptr, &type, bytes.data(), &size) != ERROR_SUCCESS)
            continue;
        snapshot[path + L"|" + name.substr(0, length)] = Text(type, bytes, size);
    }
    for (DWORD index = 0; index < keys; ++index) {
        auto length = static_cast<DWORD>(name.size());
        if (RegEnumKeyExW(key, index, name.data(), &length, nullptr, nullptr, nullptr, nullptr) != ERROR_SUCCESS)
            continue;
        const std::wstring below = path + L"\\" + name.substr(0, length);
        HKEY child = nullptr;
        if (IsChanging(below) || RegOpenKeyExW(key, name.c_str(), 0, KEY_READ | view, &child) != ERROR_SUCCESS)
            continue;
        Walk(child, below, view, snapshot);
        RegCloseKey(child);
    }
}

/// The text up to the first of these characters that no backslash takes away, without such backslashes.
std::wstring Unescaped(std::string_view text, char end, std::size_t& length) {
    std::wstring unescaped;
    for (length = 0; length < text.size() && text[length] != end; ++length) {
        if (text[length] == '\\' && length + 1 < text.size()) ++length;
        unescaped += static_cast<wchar_t>(static_cast<unsigned char>(text[length]));
    }
    return unescaped;
}

/// Reads what Wine has saved: `[path] time` begins a key, then come its values, `"name"=type:data` or `@=type:data`.
/// Long data go on behind a backslash at the end of a line.
void Parse(std::istream& saved, RegistrySnapshot& snapshot) {
    snapshot[L""];
    std::wstring path;
    std::string line, more;
    bool isSkipped = true;
    while (std::getline(saved, line)) {
        while (line.ends_with('\\') && std::getline(saved, more)) {
            line.pop_back();
            line += more;
        }
        std::size_t length = 0;
        if (line.starts_with('[')) {
            path = Unescaped(std::string_view(line).substr(1), ']', length);
            if (!path.empty()) path.insert(0, L"\\");
            isSkipped = IsChanging(path);
            // A key that has nothing but keys below it is not saved for itself.
            for (std::size_t end = path.size(); !isSkipped && end != 0; end = path.rfind(L'\\', end - 1))
                snapshot[path.substr(0, end)];
        } else if (line.starts_with('"') && !isSkipped) {
            const std::wstring name = Unescaped(std::string_view(line).substr(1), '"', length);
            snapshot[path + L"|" + name] = line.substr(length + 2);
        } else if (line.starts_with('@') && !isSkipped) {
            snapshot[path + L"|"] = line.substr(1);
        }
    }
}

void TakePrivilege(const wchar_t* name) {
    HANDLE token = nullptr;
    if (!OpenProcessToken(GetCurrentProcess(), TOKEN_ADJUST_PRIVILEGES, &token)) return;
    TOKEN_PRIVILEGES privileges = {};
    privileges.PrivilegeCount = 1;
    privileges.Privileges[0].Attributes = SE_PRIVILEGE_ENABLED;
    LookupPrivilegeValueW(nullptr, name, &privileges.Privileges[0].Luid);
    AdjustTokenPrivileges(token, FALSE, &privileges, 0, nullptr, nullptr);
    CloseHandle(token);
}

/// Under Wine every call goes to its server, and a walk through all classes takes seconds. But there a key is saved as
/// text, which takes no time. Fails on Windows.
bool TakeSaved(HKEY key, RegistrySnapshot& snapshot) {
    if (GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "wine_get_version") == nullptr) return false;
    TakePrivilege(L"SeBackupPrivilege");
    const TemporaryFolder folder;
    const std::wstring file = folder.Path() + L"\\saved.reg";
    if (RegSaveKeyW(key, file.c_str(), nullptr) != ERROR_SUCCESS) return false;
    std::ifstream saved(file.c_str(), std::ios::binary);
    std::string first;
    if (!std::getline(saved, first) || first != "WINE REGISTRY Version 2") return false;
    Parse(saved, snapshot);
    return true;
}

}  // namespace

RegistrySnapshot SnapshotOf(HKEY root, const std::wstring& path, REGSAM view) {
    RegistrySnapshot snapshot;
    HKEY key = nullptr;
    if (RegOpenKeyExW(root, path.c_str(), 0, KEY_READ | view, &key) != ERROR_SUCCESS) return snapshot;
    if (!TakeSaved(key, snapshot)) Walk(key, L"", view, snapshot);
    RegCloseKey(key);
    return snapshot;
}

std::vector<std::string> Differences(const RegistrySnapshot& before, const RegistrySnapshot& after) {
    std::vector<std::string> lines;
    const auto add = [&lines](std::string line, const std::wstring& path) {
        for (const wchar_t letter : path)
            line += letter < 128 ? static_cast<char>(letter) : '?';
        lines.push_back(std::move(line));
    };
    for (const auto& [path, value] : before) {
        const auto found = after.find(path);
        if (found == after.end()) {
            add("gone: ", path);
        } else if (found->second != value) {
            add("changed: ", path);
        }
    }
    for (const auto& [path, value] : after) {
        if (!before.contains(path)) add("new: ", path);
    }
    return lines;
}

}  // namespace kwo::test_support
