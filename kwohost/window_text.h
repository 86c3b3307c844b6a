#pragma once

#include <windows.h>

#include <string>

namespace kwohost {

/// All of a window's text: a title, a caption, what is in a field. Empty if the window has gone.
std::wstring TextOf(HWND window);

}  // namespace kwohost
