#pragma once

#include <windows.h>

#include <map>

#include "platform/timer_service.h"
#include "platform/windows/apartment_watch.h"
#include "platform/windows/context.h"

namespace kwo::platform::windows {

/// The timers of the calling thread (SetTimer without a window).
///
/// The module counts as used from the start of a timer to its end, and while a handler runs. When the thread leaves
/// its apartment, the timers end and their handlers are told. A list of all services leads the system's callback,
/// which knows only the timer's number, to the service of its thread.
class WindowsTimerService final : public TimerService, private ApartmentUser {
public:
    /// The service of the thread that creates it. `context` must outlive it.
    explicit WindowsTimerService(Context& context);
    /// Stops every timer. Their handlers are not told.
    ~WindowsTimerService() override;
    WindowsTimerService(const WindowsTimerService&) = delete;
    WindowsTimerService& operator=(const WindowsTimerService&) = delete;

    /// Counts the module as used until Stop.
    /// A handler's call may stop timers and start others.
    /// Returns 0 without memory, too.
    std::int32_t Start(std::uint32_t delayMs, TimerHandler& handler) override;
    /// Stops a timer (KillTimer). A message that is still in the queue then finds no handler.
    void Stop(std::int32_t timerId) override;
    /// Stops every timer of the thread. Their handlers are not told. May run on the thread that unloads the module.
    void StopAll();
    /// The calling thread ends: tells the handler of each timer, and stops the timer.
    void EndThread() noexcept;

private:
    /// What the system calls.
    /// Finds the service of the thread and the handler of the timer under the lock of all services, and calls the
    /// handler without it.
    static void CALLBACK Fire(HWND, UINT, UINT_PTR timerId, DWORD);
    /// Null for a timer that does not run.
    TimerHandler* HandlerOf(std::int32_t timerId) const;
    void ApartmentEnds() noexcept override { EndThread(); }

    ModuleUse& mUse;
    /// The thread that made the service, to find it again in Fire.
    DWORD mThread;
    /// In the list of all services.
    WindowsTimerService* mNext = nullptr;
    /// Watches while a timer runs.
    ApartmentWatch mApartment{*this};
    /// The handlers by the numbers of their timers.
    std::map<std::int32_t, TimerHandler*> mRunning;
};

}  // namespace kwo::platform::windows
