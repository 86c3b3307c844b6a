#pragma once

#include <cstdint>

namespace kwo::platform {

/// What a platform timer calls.
class TimerHandler {
public:
    virtual ~TimerHandler() = default;

    /// Runs on the thread that started the timer, while that thread dispatches messages; nothing may be raised.
    virtual void TimerProc() noexcept = 0;
    /// Runs on that thread when it ends, or leaves its apartment, while the timer runs: it will not fire again.
    virtual void ThreadEnds() noexcept {}
};

/// The thread's platform timers without a window.
class TimerService {
public:
    virtual ~TimerService() = default;

    /// SetTimer: calls `handler` every `delayMs` until Stop, at most once for periods that were missed. Returns the
    /// timer's identifier, 0 when the platform has none left.
    virtual std::int32_t Start(std::uint32_t delayMs, TimerHandler& handler) = 0;
    /// KillTimer. An identifier that is none is left alone.
    virtual void Stop(std::int32_t timerId) = 0;
};

}  // namespace kwo::platform
