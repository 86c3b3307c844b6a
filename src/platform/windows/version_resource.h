#pragma once

#include <string>
#include <vector>

#include "platform/host_application.h"
#include "platform/windows/system_library.h"

namespace kwo::platform::windows {

/// What a file tells about itself; empty texts and zeros where it tells nothing.
class VersionResource {
public:
    /// `versions` is the system's version.dll; without it every file tells nothing.
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
