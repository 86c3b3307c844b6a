#pragma once

#include "platform/pictures.h"

namespace kwo::platform::windows {

/// Pictures by their early-bound interface (IPicture), else by the dispatch identifiers that every picture has.
/// Raises ObjectRequired (424) for a host object that is not one of this platform.
class WindowsPictures final : public Pictures {
public:
    /// IPicture::get_Type, else DISPID_PICT_TYPE.
    std::int32_t Type(HostObject& picture) override;
    /// IPicture::get_Handle, else DISPID_PICT_HANDLE. The low 32 bits of the handle.
    Handle NativeHandle(HostObject& picture) override;
};

}  // namespace kwo::platform::windows
