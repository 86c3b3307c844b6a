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

}  // namespace

std::optional<int> RunMessages(std::chrono::milliseconds duration, const std::function<void()>& afterEach) {
    const bool waits = duration.count() > 0;
    const Clock::time_point end = Clock::now() + (waits ? duration : kLongestForPending);
    do {
        MSG message;
        // No more than one message between two looks at the clock, so that a flood of them cannot hold the end back.
        if (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
            if (message.message == WM_QUIT) return static_cast<int>(message.wParam);
            TranslateMessage(&message);
            DispatchMessageW(&message);
            afterEach();
        } else if (!waits) {
            return std::nullopt;
        } else {
            MsgWaitForMultipleObjectsEx(0, nullptr, MillisecondsUntil(end), QS_ALLINPUT, MWMO_INPUTAVAILABLE);
        }
    } while (Clock::now() < end);
    return std::nullopt;
}

}  // namespace kwohost
