#pragma once

#include <utility>

#include "platform/component_error.h"
#include "platform/variant.h"

namespace kwo::platform {

/// The object, for a call on something that the host may not have set:
///
///     Required(mBox).Let(u"Left", leftTwips);
///
/// Raises NoObjectSet (91) for null. The reference stays valid only as long as `object` keeps its object; a call on it
/// may run code of the host that replaces `object`.
inline HostObject& Required(const HostObjectRef& object) {
    if (object == nullptr) RaiseRuntime(RuntimeError::NoObjectSet);
    return *object;
}

/// Runs one statement whose errors do not count:
///
///     Try([&] { form.Set(u"Font", font); });
///
/// If the statement raises a ComponentError, it ends there, and what it had done by then stays. std::bad_alloc goes on
/// to the caller, and so does every other exception.
template <class Statement>
void Try(Statement&& statement) {
    try {
        std::forward<Statement>(statement)();
    } catch (const ComponentError&) {
    }
}

}  // namespace kwo::platform
