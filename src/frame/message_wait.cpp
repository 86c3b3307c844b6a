#include "frame/message_wait.h"

#include "frame/rounding.h"

namespace kwo::frame {

namespace {

using platform::Milliseconds;

constexpr std::uint32_t kAnyInput = 0xFF;
constexpr std::uint32_t kAlertable = 2;

}  // namespace

bool MessageWait::KWO_Wait(std::int32_t milliseconds, bool pumpMessages) {
    if (milliseconds <= 0) return true;
    const Milliseconds end{mClock.KWO_TimerMs().scaled + Milliseconds::Whole(milliseconds).scaled};
    if (!mMessages.ProcessPending()) return false;
    for (;;) {
        const Milliseconds left{end.scaled - mClock.KWO_TimerMs().scaled};
        if (left.scaled <= 0) return true;
        WaitForInput(static_cast<std::uint32_t>(RoundHalfEven(left)));
        if (pumpMessages && !mMessages.ProcessPending()) return false;
    }
}

void MessageWait::WaitForInput(std::uint32_t timeoutMs) {
    if (mIdentity.KWO_IsWinNT()) {
        mMessages.WaitForInputEx(timeoutMs, kAnyInput, kAlertable);
    } else {
        mMessages.WaitForInput(timeoutMs, kAnyInput);
    }
}

}  // namespace kwo::frame
