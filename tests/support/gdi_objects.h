#pragma once

#include <windows.h>

#include <cstdint>

namespace kwo::test_support {

/// The graphics objects of this process. Wine's own count of them is always 0.
inline long GdiObjectsInUse() {
    if (const DWORD told = GetGuiResources(GetCurrentProcess(), GR_GDIOBJECTS)) return static_cast<long>(told);
    // Handles of Wine's graphics objects are their places in a table; it accepts them without the count in their upper
    // half.
    constexpr std::uintptr_t kPlaces = 0x10000;
    long count = 0;
    for (std::uintptr_t place = 1; place < kPlaces; ++place)
        if (GetObjectType(reinterpret_cast<HGDIOBJ>(place)) != 0) ++count;
    return count;
}

}  // namespace kwo::test_support
