#pragma once

#include "invoke_fuzz/random.h"
#include "live_objects.h"

namespace kwo::soak {

using invoke_fuzz::Random;

/// Uses of the classes that need neither forms nor a message loop. Each makes its objects, looks at what it gets, and
/// gives everything back.
void UseRegistry(Random& random);
void UseMetrics(Random& random);
void UseFonts(Random& random);
/// Like UseFonts, but asks the fonts for nothing.
void MakeFonts();
void UseUtility(Random& random);
void UseMessages(Random& random);
/// `window` is a window of this thread.
void UseTray(Random& random, HWND window);
void UsePatterns(Random& random);

/// Removes what UseRegistry may have left.
void RemoveRegistryKey();

}  // namespace kwo::soak
