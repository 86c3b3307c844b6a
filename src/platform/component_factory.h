#pragma once

#include "platform/text.h"
#include "platform/variant.h"

namespace kwo::platform {

/// Creates objects of other automation components on this machine.
class ComponentFactory {
public:
    virtual ~ComponentFactory() = default;

    /// Creates an object of the class with this programmatic identifier. Raises CannotCreateObject if there is no such
    /// class or it cannot create one.
    virtual HostObjectRef Create(TextView programmaticId) = 0;
};

}  // namespace kwo::platform
