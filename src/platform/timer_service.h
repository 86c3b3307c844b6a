#pragma once

#include <cstdint>

namespace kwo::platform {

/// What a platform timer calls.
class TimerHandler {
public:
    virtual ~TimerHandler() = default;

    /// The timer fires. Runs on the thread that started the timer, while that thread dispatches messages. Must not
    /// raise.
    virtual void TimerProc() noexcept = 0;
    /// The thread ends, or leaves its apartment, while the timer runs. Runs on that thread. The timer has stopped.
    virtual void ThreadEnds() noexcept {}
};

/// The platform timers of the calling thread. They need no window.
class TimerService {
public:
    virtual ~TimerService() = default;

    /// Calls `handler` every `delayMs` milliseconds until Stop (SetTimer). Missed periods fire once. Returns the
    /// identifier of the timer, or 0 if the system has no timer left. `handler` must live until Stop.
    virtual std::int32_t Start(std::uint32_t delayMs, TimerHandler& handler) = 0;
    /// Stops a timer (KillTimer). Does nothing for an identifier that is not running.
    virtual void Stop(std::int32_t timerId) = 0;
};

}  // namespace kwo::platform
