#include "message_loop.h"

#include <windows.h>

namespace kwohost {

namespace {

using Clock = std::chrono::steady_clock;

/// Messages may make new ones without end, such as the painting of a window that is never painted.
constexpr std::chrono::milliseconds kLongestForPending(500);

DWORD MillisecondsUntil(Clock::time_point end) {
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(end - Clock::now()).count();
    if (left <= 0) return 0;
    return left < INFINITE ? static_cast<DWORD>(left) : INFINITE - 1;
}

/// A box that the system runs has a loop of its own. It does not see what this loop takes, from an event inside.
bool IsForDialogBox(MSG& message) {
    const HWND top = GetAncestor(message.hwnd, GA_ROOT);
    return top && GetClassLongW(top, GCW_ATOM) == LOWORD(WC_DIALOG) && IsDialogMessageW(top, &message);
}

/// False if there is no message. A request to quit is not handled but goes to `quit`.
bool RunOne(std::optional<int>& quit, const std::function<void()>& afterEach) {
    MSG message;
    if (!PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) return false;
    if (message.message == WM_QUIT) {
        quit = static_cast<int>(message.wParam);
        return true;
    }
    if (!IsForDialogBox(message)) {
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
    afterEach();
    return true;
}

void WaitForMessage(DWORD milliseconds) {
    MsgWaitForMultipleObjectsEx(0, nullptr, milliseconds, QS_ALLINPUT, MWMO_INPUTAVAILABLE);
}

}  // namespace

std::optional<int> RunMessages(std::chrono::milliseconds duration, const std::function<void()>& afterEach) {
    const bool waits = duration.count() > 0;
    const Clock::time_point end = Clock::now() + (waits ? duration : kLongestForPending);
    std::optional<int> quit;
    do {
        // No more than one message between two looks at the clock, so that a flood of them cannot hold the end back.
        if (RunOne(quit, afterEach)) {
            if (quit) return quit;
        } else if (!waits) {
            return std::nullopt;
        } else {
            WaitForMessage(MillisecondsUntil(end));
        }
    } while (Clock::now() < end);
    return std::nullopt;
}

std::optional<int> RunMessagesUntil(const std::function<bool()>& isOver, const std::function<void()>& afterEach) {
    std::optional<int> quit;
    while (!quit && !isOver())
        if (!RunOne(quit, afterEach)) WaitForMessage(INFINITE);
    return quit;
}

}  // namespace kwohost
