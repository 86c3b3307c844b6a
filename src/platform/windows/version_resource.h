#pragma once

#include <string>
#include <vector>

#include "platform/host_application.h"
#include "platform/windows/system_library.h"

namespace kwo::platform::windows {

/// The version resource of a file, read once; empty texts and zeros if it has none.
/// Raises nothing but lack of memory.
///
///     const Text title = VersionResource(mVersions, path).String(L"FileDescription");
class VersionResource {
public:
    /// Reads the resource of the file at `path`.
    /// `versions` is the system's version.dll and must outlive this object; without it every file counts as one
    /// without the resource.
    VersionResource(SystemLibrary& versions, const std::wstring& path);

    /// The file's version: the first, the second and the fourth part.
    HostApplication::Version Number() const;
    /// A text by its name, "ProductName", in the first language that the file lists. Empty if there is none.
    Text String(const wchar_t* name) const;

private:
    /// A part of the resource by its path; null if there is none. `size` is in bytes, or in characters for a text.
    const void* Find(const wchar_t* path, unsigned& size) const;

    SystemLibrary& mVersions;
    /// Empty if the file has no resource.
    std::vector<char> mData;
};

}  // namespace kwo::platform::windows
