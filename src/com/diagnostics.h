#pragma once

#include "component/component.h"

namespace kwo::com {

#ifdef KWO_DIAGNOSTIC

/// Starts the call trace of a new component if the environment variable KWO_TRACE_FOLDER names a folder for its log.
/// If the log cannot be created, the debug output says so, and the component works without one.
/// Only the diagnostic build does this, see docs/trace.md.
void StartTrace(component::Component& component) noexcept;

#else

inline void StartTrace(component::Component&) noexcept {}

#endif

}  // namespace kwo::com
