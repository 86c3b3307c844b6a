#pragma once

#include "platform/text.h"
#include "platform/variant.h"

namespace kwo::platform {

/// Other automation components of the machine.
class ComponentFactory {
public:
    virtual ~ComponentFactory() = default;

    /// A new object of the class with that programmatic identifier. Raises CannotCreateObject.
    virtual HostObjectRef Create(TextView programmaticId) = 0;
};

}  // namespace kwo::platform
