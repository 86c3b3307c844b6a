#pragma once

#include "platform/text.h"
#include "platform/variant.h"

namespace kwo::platform {

/// Creates objects of other automation components on this machine. The message table uses it to reach the companion.
class ComponentFactory {
public:
    virtual ~ComponentFactory() = default;

    /// Creates an object of the class with this programmatic identifier, such as "Vendor.Class".
    /// Upper and lower case are the same. The server may be a DLL or a program; starting one can take seconds and may
    /// process messages. Never returns null.
    /// Raises CannotCreateObject (429) if there is no such class, if it cannot create an object, or if the object has
    /// no late-bound interface; std::bad_alloc if memory runs out meanwhile, also in the server.
    virtual HostObjectRef Create(TextView programmaticId) = 0;
};

}  // namespace kwo::platform
