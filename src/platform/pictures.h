#pragma once

#include <cstdint>

#include "platform/variant.h"

namespace kwo::platform {

/// Reads picture objects of the host. Both calls raise whatever the object raises.
class Pictures {
public:
    /// The Type of an icon.
    static constexpr std::int32_t kIcon = 3;

    virtual ~Pictures() = default;

    /// The type of the picture: 0 none, 1 bitmap, 2 metafile, 3 icon, 4 enhanced metafile.
    virtual std::int32_t Type(HostObject& picture) = 0;
    /// The system's handle of the picture. The picture object owns it: keep the object as long as the handle is used.
    virtual Handle NativeHandle(HostObject& picture) = 0;
};

}  // namespace kwo::platform
