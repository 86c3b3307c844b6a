#pragma once

#include "platform/component_factory.h"

namespace kwo::platform::windows {

/// Creates objects of registered classes, whose server may be a DLL or a program. The class must offer IDispatch.
class WindowsComponentFactory final : public ComponentFactory {
public:
    HostObjectRef Create(TextView programmaticId) override;
};

}  // namespace kwo::platform::windows
