#pragma once

#include <cstdint>

namespace kwo::platform {

/// What a platform timer calls. The registry of timers implements it.
class TimerHandler {
public:
    virtual ~TimerHandler() = default;

    /// The timer fires.
    /// Runs on the thread that started the timer, while that thread dispatches messages, also messages of a message
    /// box.
    /// It may start and stop timers, also its own. Must not raise.
    virtual void TimerProc() noexcept = 0;
    /// The thread ends, or leaves its apartment, while the timer runs.
    /// Runs on that thread. The timer is stopped as soon as this returns and does not fire again.
    virtual void ThreadEnds() noexcept {}
};

/// The platform timers of the calling thread.
/// They need no window, but a thread that dispatches messages: nothing fires while the thread is busy.
///
///     const std::int32_t id = timers.Start(500, handler);  // handler.TimerProc runs twice a second
///     if (id != 0) timers.Stop(id);
class TimerService {
public:
    virtual ~TimerService() = default;

    /// Calls `handler` every `delayMs` milliseconds until Stop (SetTimer).
    /// Periods that the thread was too busy for fire once. Windows takes 10 ms for a shorter delay.
    /// Returns the identifier of the timer, or 0 if the system has no timer left or no memory; raises nothing.
    /// `handler` must live until Stop.
    virtual std::int32_t Start(std::uint32_t delayMs, TimerHandler& handler) = 0;
    /// Stops a timer (KillTimer).
    /// Its handler is not called again, even if a message of the timer is already in the queue.
    /// Does nothing for an identifier that is not running.
    virtual void Stop(std::int32_t timerId) = 0;
};

}  // namespace kwo::platform
