#pragma once

#include "platform/component_factory.h"

namespace kwo::platform::windows {

/// Creates objects of registered classes (CoCreateInstance), whose server may be a DLL or a program on this machine.
/// The class must offer IDispatch. The thread must have entered an apartment.
/// A name is looked up to its first zero character.
class WindowsComponentFactory final : public ComponentFactory {
public:
    /// CLSIDFromProgID and CoCreateInstance, with a server in the process before any other. The system's reason for a
    /// failure is lost, but for lack of memory.
    HostObjectRef Create(TextView programmaticId) override;
};

}  // namespace kwo::platform::windows
