#pragma once

#include <utility>

#include "platform/component_error.h"
#include "platform/variant.h"

namespace kwo::platform {

/// The object. Raises NoObjectSet (91) for null.
inline HostObject& Required(const HostObjectRef& object) {
    if (object == nullptr) RaiseRuntime(RuntimeError::NoObjectSet);
    return *object;
}

/// Runs one statement whose errors do not count: if it raises one, it ends there. std::bad_alloc goes on.
template <class Statement>
void Try(Statement&& statement) {
    try {
        std::forward<Statement>(statement)();
    } catch (const ComponentError&) {
    }
}

}  // namespace kwo::platform
