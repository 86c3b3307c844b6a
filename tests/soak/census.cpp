#include "census.h"

#include <windows.h>

#include <cstdint>

#include "live_objects.h"
#include "process_resources.h"
#include "support/gdi_objects.h"
#include "wine.h"

namespace kwo::soak {
namespace {

/// The windows of this process below `parent`, or all top-level ones.
long WindowsBelow(HWND parent) {
    long count = 0;
    for (HWND window = FindWindowExW(parent, nullptr, nullptr, nullptr); window != nullptr;
         window = FindWindowExW(parent, window, nullptr, nullptr)) {
        DWORD process = 0;
        GetWindowThreadProcessId(window, &process);
        if (process == GetCurrentProcessId()) count += 1 + WindowsBelow(window);
    }
    return count;
}

bool IsIcon(HICON icon) {
    ICONINFO info = {};
    if (!GetIconInfo(icon, &info)) return false;
    DeleteObject(info.hbmMask);
    if (info.hbmColor != nullptr) DeleteObject(info.hbmColor);
    return true;
}

/// Windows, menus, icons and pointers. Wine's handles of them are even numbers.
long WineUserObjects() {
    constexpr std::uintptr_t kFirst = 0x20;
    constexpr std::uintptr_t kLast = 0xffef;
    long count = WindowsBelow(nullptr) + WindowsBelow(HWND_MESSAGE);
    for (std::uintptr_t place = kFirst; place <= kLast; place += 2) {
        if (IsMenu(reinterpret_cast<HMENU>(place))) ++count;
        if (IsIcon(reinterpret_cast<HICON>(place))) ++count;
    }
    return count;
}

}  // namespace

Census TakeCensus() {
    Census census;
    census.keysLostByWine = com_test::CloseKeysLostByWine();
    const auto resources = com_test::ResourcesInUse();
    census.handles = resources.handles;
    census.privateBytes = resources.committedBytes;
    census.heapBytes = resources.heapBytes;
    census.gdiObjects = test_support::GdiObjectsInUse();
    census.userObjects = com_test::IsWine() ? WineUserObjects()
                                            : static_cast<long>(GetGuiResources(GetCurrentProcess(), GR_USEROBJECTS));
    census.liveObjects = LiveObjects();
    return census;
}

}  // namespace kwo::soak
