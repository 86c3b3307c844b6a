#pragma once

#include <windows.h>

#include <string>

namespace kwohost {

/// These write BMP files of 24 bits, over a file of that name.
/// They raise error 75 for a file that cannot be written, 481 for a picture that cannot be read and 7 for one that is
/// too large; there is no file then.
/// The bitmap stays the caller's and must not be selected into a context.
void SaveBitmap(HBITMAP bitmap, const std::wstring& path);
/// Writes what a context shows inside `area`, in pixels of the context; the screen's context shows the whole screen.
/// Raises 481 for an empty area. The context stays the caller's.
void SaveArea(HDC context, const RECT& area, const std::wstring& path);

}  // namespace kwohost
