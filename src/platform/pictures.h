#pragma once

#include <cstdint>

#include "platform/variant.h"

namespace kwo::platform {

/// What a host's picture object is. Both raise what the object raises.
class Pictures {
public:
    static constexpr std::int32_t kIcon = 3;

    virtual ~Pictures() = default;

    /// 0 none, 1 bitmap, 2 metafile, 3 icon, 4 enhanced metafile.
    virtual std::int32_t Type(HostObject& picture) = 0;
    virtual Handle NativeHandle(HostObject& picture) = 0;
};

}  // namespace kwo::platform
