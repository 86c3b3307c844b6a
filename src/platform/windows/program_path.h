#pragma once

#include <string>

namespace kwo::platform::windows {

/// The file's name without folder and extension: "HOSTAPP" of "C:\Host\HOSTAPP.EXE".
/// The extension is what follows the last dot. Slashes separate folders as backslashes do.
inline std::wstring NameOf(std::wstring path) {
    path.erase(0, path.find_last_of(L"\\/") + 1);
    const auto extension = path.rfind(L'.');
    if (extension != std::wstring::npos) path.resize(extension);
    return path;
}

/// The folder of the file without a separator at its end; empty if the path has none.
/// For the root of a drive the separator stays, because a drive alone would mean the drive's current folder.
inline std::wstring FolderOf(std::wstring path) {
    const auto separator = path.find_last_of(L"\\/");
    if (separator == std::wstring::npos) return {};
    const bool isRoot = separator > 0 && path[separator - 1] == L':';
    path.resize(isRoot ? separator + 1 : separator);
    return path;
}

}  // namespace kwo::platform::windows
