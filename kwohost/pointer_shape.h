#pragma once

#include <windows.h>

namespace kwohost {

/// The system's pointer for a number of MousePointer: 1 arrow, 2 cross, 3 text, 5 move, 6 to 9 sizes, 10 up arrow,
/// 11 hourglass, 12 not here, 13 arrow and hourglass, 14 arrow and question mark, 15 move. The system owns it.
/// Null for 0, which leaves the choice to others. Raises error 380 for any other number.
HCURSOR PointerShape(LONG number);
/// Shows at once what the window under the pointer wants, if it is one of this thread.
void RefreshPointer();

}  // namespace kwohost
