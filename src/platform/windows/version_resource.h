#pragma once

#include <string>
#include <vector>

#include "platform/host_application.h"
#include "platform/windows/system_library.h"

namespace kwo::platform::windows {

/// The version resource of a file; empty texts and zeros if it has none.
class VersionResource {
public:
    /// `versions` is the system's version.dll; without it every file counts as one without the resource.
    VersionResource(SystemLibrary& versions, const std::wstring& path);

    /// The file's version; the revision is its fourth part.
    HostApplication::Version Number() const;
    /// In the file's first language.
    Text String(const wchar_t* name) const;

private:
    const void* Find(const wchar_t* path, unsigned& size) const;

    SystemLibrary& mVersions;
    std::vector<char> mData;
};

}  // namespace kwo::platform::windows
