#pragma once

#include <windows.h>

#include <map>

#include "platform/timer_service.h"
#include "platform/windows/apartment_watch.h"
#include "platform/windows/context.h"

namespace kwo::platform::windows {

/// The timers of the calling thread. The module counts as used from the start of a timer to its end, and while a
/// handler runs. When the thread leaves its apartment, the timers end.
class WindowsTimerService final : public TimerService, private ApartmentUser {
public:
    explicit WindowsTimerService(Context& context);
    ~WindowsTimerService() override;
    WindowsTimerService(const WindowsTimerService&) = delete;
    WindowsTimerService& operator=(const WindowsTimerService&) = delete;

    /// Counts the module as used until Stop. A handler's call may stop timers and start others.
    std::int32_t Start(std::uint32_t delayMs, TimerHandler& handler) override;
    void Stop(std::int32_t timerId) override;
    /// Stops every timer of the thread. Their handlers are not told.
    void StopAll();
    /// The calling thread ends: stops its timers and tells their handlers.
    void EndThread() noexcept;

private:
    static void CALLBACK Fire(HWND, UINT, UINT_PTR timerId, DWORD);
    TimerHandler* HandlerOf(std::int32_t timerId) const;
    void ApartmentEnds() noexcept override { EndThread(); }

    ModuleUse& mUse;
    DWORD mThread;
    WindowsTimerService* mNext = nullptr;
    ApartmentWatch mApartment{*this};
    std::map<std::int32_t, TimerHandler*> mRunning;
};

}  // namespace kwo::platform::windows
