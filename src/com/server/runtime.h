#pragma once

namespace kwo::com {

/// One value of the calling thread, null at first: the module's own, gone with the thread or the module.
void*& ThreadValue();

/// Gives back what the compiler's run-time took when the module was loaded and would keep. The last act of a module.
void GiveBackRuntime();

}  // namespace kwo::com
