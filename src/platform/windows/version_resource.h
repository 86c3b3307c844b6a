#pragma once

#include <string>
#include <vector>

#include "platform/host_application.h"

namespace kwo::platform::windows {

/// What a file tells about itself; empty texts and zeros where it tells nothing.
class VersionResource {
public:
    explicit VersionResource(const std::wstring& path);

    /// The file's version; the revision is its fourth part.
    HostApplication::Version Number() const;
    /// In the file's first language.
    Text String(const wchar_t* name) const;

private:
    const void* Find(const wchar_t* path, unsigned& size) const;

    std::vector<char> mData;
};

}  // namespace kwo::platform::windows
