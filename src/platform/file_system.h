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
};

}  // namespace kwo::platform
