#pragma once

#include <windows.h>

namespace kwo::test_support {

/// Milliseconds of the clock that the component counts with.
inline double NowMs() {
    LARGE_INTEGER count;
    LARGE_INTEGER frequency;
    QueryPerformanceCounter(&count);
    QueryPerformanceFrequency(&frequency);
    return static_cast<double>(count.QuadPart) * 1'000 / static_cast<double>(frequency.QuadPart);
}

}  // namespace kwo::test_support
