#pragma once

#include "platform/component_factory.h"

namespace kwo::platform::windows {

class WindowsComponentFactory final : public ComponentFactory {
public:
    HostObjectRef Create(TextView programmaticId) override;
};

}  // namespace kwo::platform::windows
