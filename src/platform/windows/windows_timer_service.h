#pragma once

#include <windows.h>

#include <map>

#include "platform/timer_service.h"
#include "platform/windows/module_use.h"

namespace kwo::platform::windows {

/// Timers of the calling thread. The module counts as used from the start of a timer to its end, and while one calls.
class WindowsTimerService final : public TimerService {
public:
    explicit WindowsTimerService(ModuleUse& use);
    ~WindowsTimerService() override;
    WindowsTimerService(const WindowsTimerService&) = delete;
    WindowsTimerService& operator=(const WindowsTimerService&) = delete;

    std::int32_t Start(std::uint32_t delayMs, TimerHandler& handler) override;
    void Stop(std::int32_t timerId) override;
    void StopAll();

private:
    static void CALLBACK Fire(HWND, UINT, UINT_PTR timerId, DWORD);
    TimerHandler* HandlerOf(std::int32_t timerId) const;

    ModuleUse& mUse;
    DWORD mThread;
    WindowsTimerService* mNext = nullptr;
    std::map<std::int32_t, TimerHandler*> mRunning;
};

}  // namespace kwo::platform::windows
