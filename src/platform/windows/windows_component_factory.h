#pragma once

#include "platform/component_factory.h"

namespace kwo::platform::windows {

/// Creates objects of registered classes (CoCreateInstance), whose server may be a DLL or a program on this machine.
/// The class must offer IDispatch. The thread must have entered an apartment.
/// A name is looked up to its first zero character. Lack of memory is reported as a class that cannot be created.
class WindowsComponentFactory final : public ComponentFactory {
public:
    /// CLSIDFromProgID and CoCreateInstance with CLSCTX_SERVER. The system's reason for a failure is lost.
    HostObjectRef Create(TextView programmaticId) override;
};

}  // namespace kwo::platform::windows
