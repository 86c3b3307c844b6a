#pragma once

#include <windows.h>

#include <string>

namespace kwohost {

/// Writes the bitmap as a BMP file of 24 bits. Raises error 75 for a file that cannot be written.
void SaveBitmap(HBITMAP bitmap, const std::wstring& path);
/// Writes what is on the screen inside `area`.
void SaveScreen(const RECT& area, const std::wstring& path);

}  // namespace kwohost
