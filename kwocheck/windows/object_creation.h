#pragma once

#include "kwocheck/facts.h"

namespace kwocheck {

/// Creates an object by its name, as CreateObject of a script does, calls the member of its trial, and releases it.
/// The thread must have entered an apartment. Raises nothing but lack of memory.
Creation CreateAndCall(const KnownClass& known);

}  // namespace kwocheck
