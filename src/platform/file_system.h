#pragma once

#include <cstdint>

#include "platform/text.h"

namespace kwo::platform {

/// What the logic asks about files by name.
class FileSystem {
public:
    static constexpr std::int32_t kNoAttributes = -1;
    static constexpr std::int32_t kFolder = 0x10;

    virtual ~FileSystem() = default;

    /// GetFileAttributesW; kNoAttributes when there is nothing of that name.
    virtual std::int32_t Attributes(TextView path) = 0;
    /// GetFileAttributesA: the same with the name in the system's code page.
    virtual std::int32_t AttributesAnsi(TextView path) = 0;
    /// Whether the folder's listing has a plain file that matches `pattern`, in which the name may hold wildcards: one
    /// that is no folder, not hidden and no system file.
    virtual bool ListsFile(TextView pattern) = 0;
};

}  // namespace kwo::platform
