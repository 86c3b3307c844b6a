#pragma once

namespace kwo::com {

/// A value of the calling thread, null at first. It belongs to this module and ends with the thread or the module.
void*& ThreadValue();

/// Gives back what the compiler's run-time took when the module was loaded. Must be the last act of a module.
void GiveBackRuntime();

}  // namespace kwo::com
