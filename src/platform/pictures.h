#pragma once

#include <cstdint>

#include "platform/variant.h"

namespace kwo::platform {

/// Reads picture objects of the host.
/// Both calls may run code of the host.
///
/// Both raise whatever the object raises. Any object may be passed: one without the member raises NoSuchMember, one
/// whose member is not a number TypeMismatch, and one whose number does not fit 32 bits Overflow.
class Pictures {
public:
    /// The Type of an icon.
    static constexpr std::int32_t kIcon = 3;

    virtual ~Pictures() = default;

    /// The type of the picture: 0 none, 1 bitmap, 2 metafile, 3 icon, 4 enhanced metafile; -1 if the picture was never
    /// set up.
    virtual std::int32_t Type(HostObject& picture) = 0;
    /// The system's handle of the picture; 0 for an empty one.
    /// The picture object owns it: keep the object as long as the handle is used.
    virtual Handle NativeHandle(HostObject& picture) = 0;
};

}  // namespace kwo::platform
