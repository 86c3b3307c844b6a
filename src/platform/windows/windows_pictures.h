#pragma once

#include "platform/pictures.h"

namespace kwo::platform::windows {

/// Pictures by their early-bound interface, else by the dispatch identifiers that every picture has.
class WindowsPictures final : public Pictures {
public:
    std::int32_t Type(HostObject& picture) override;
    Handle NativeHandle(HostObject& picture) override;
};

}  // namespace kwo::platform::windows
