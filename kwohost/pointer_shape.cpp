#include "pointer_shape.h"

#include <iterator>

#include "com_values.h"

namespace kwohost {

namespace {

constexpr WORD kArrow = 32512, kText = 32513, kHourglass = 32514, kCross = 32515, kUpArrow = 32516,
               kSizeNorthWest = 32642, kSizeNorthEast = 32643, kSizeWestEast = 32644, kSizeNorthSouth = 32645,
               kMove = 32646, kNotHere = 32648, kArrowAndHourglass = 32650, kArrowAndQuestion = 32651;

/// In the order of MousePointer, from 1. The system has no pointer that looks like an icon (4).
constexpr WORD kShapes[] = {
    kArrow,         kCross,        kText,    kArrow,     kMove,    kSizeNorthEast,     kSizeNorthSouth,
    kSizeNorthWest, kSizeWestEast, kUpArrow, kHourglass, kNotHere, kArrowAndHourglass, kArrowAndQuestion,
    kMove};

}  // namespace

HCURSOR PointerShape(LONG number) {
    if (number == 0) return nullptr;
    if (number < 0 || number > static_cast<LONG>(std::size(kShapes)))
        Fail(RuntimeError::InvalidPropertyValue, L"MousePointer is a number from 0 to 15");
    return LoadCursorW(nullptr, MAKEINTRESOURCEW(kShapes[number - 1]));
}

void RefreshPointer() {
    POINT place = {};
    GetCursorPos(&place);
    const HWND under = WindowFromPoint(place);
    if (!under || GetWindowThreadProcessId(under, nullptr) != GetCurrentThreadId()) return;
    const LRESULT part = SendMessageW(under, WM_NCHITTEST, 0, MAKELPARAM(place.x, place.y));
    SendMessageW(under, WM_SETCURSOR, reinterpret_cast<WPARAM>(under), MAKELPARAM(part, WM_MOUSEMOVE));
}

}  // namespace kwohost
