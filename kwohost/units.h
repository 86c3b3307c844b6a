#pragma once

#include <windows.h>

#include <cmath>

#include "com_values.h"

namespace kwohost {

/// What positions and sizes are counted in; the numbers are those of ScaleMode.
enum class Scale : LONG { Twips = 1, Pixels = 3 };

/// The display may have other factors down than across.
enum class Axis { X, Y };

/// 1440 by the logical dots per inch of the display, to the nearest whole number (halves to even); 15 if the display
/// tells none.
/// Components count with whole numbers of twips, and meet a pixel only in a host that counts in the same way. So
/// everything here does, also where the quotient is 8.57 (168 dots) or 7.5 (192 dots).
inline double TwipsPerPixel(Axis axis) {
    const HDC screen = GetDC(nullptr);
    const int dotsPerInch = GetDeviceCaps(screen, axis == Axis::X ? LOGPIXELSX : LOGPIXELSY);
    ReleaseDC(nullptr, screen);
    return dotsPerInch > 0 ? std::nearbyint(1440.0 / dotsPerInch) : 15;
}

/// How many units of the scale a pixel has. The display is asked once for the whole process.
inline double UnitsPerPixel(Scale scale, Axis axis) {
    static const double twips[] = {TwipsPerPixel(Axis::X), TwipsPerPixel(Axis::Y)};
    return scale == Scale::Pixels ? 1.0 : twips[axis == Axis::X ? 0 : 1];
}

/// A length in pixels, rounded, halves away from 0.
/// Raises error 6 for what no window reaches; the sum of a position and a size does not overflow.
inline int ToPixels(double units, Scale scale, Axis axis) {
    constexpr double kFarthest = 0x3FFFFFFF;
    const double pixels = units / UnitsPerPixel(scale, axis);
    if (!(std::abs(pixels) <= kFarthest)) Fail(RuntimeError::Overflow, L"The position or size is too large");
    return static_cast<int>(std::lround(pixels));
}

/// A length in pixels in the units of the scale, exactly.
inline double ToUnits(int pixels, Scale scale, Axis axis) {
    return pixels * UnitsPerPixel(scale, axis);
}

/// An automation colour as the system draws it: 0x80000000 + n is the system's colour n, as the user has set it now.
inline COLORREF ToColour(LONG colour) {
    constexpr LONG kIndex = 0xFF;
    return colour < 0 ? GetSysColor(colour & kIndex) : static_cast<COLORREF>(colour);
}

}  // namespace kwohost
