#pragma once

namespace kwo::com {

/// A value of the calling thread, null at first.
/// It belongs to this module and ends with the thread or the module; what it points to is the caller's to free.
/// It takes no thread-local slot of the host and cannot fail.
void*& ThreadValue();

/// Gives back what the compiler's run-time took when the module was loaded.
/// Must be the last act of a module: nothing may throw after it.
void GiveBackRuntime();

}  // namespace kwo::com
