#include "platform/windows/windows_timer_service.h"

#include <mutex>
#include <new>
#include <utility>

#include "platform/windows/lock.h"

namespace kwo::platform::windows {

namespace {

/// Guards the list of all services: the system passes its callback only the timer's identifier, and two threads may
/// have the same one. Each service is used by its own thread only.
constinit Lock gLock;
constinit WindowsTimerService* gFirst = nullptr;

}  // namespace

WindowsTimerService::WindowsTimerService(Context& context) : mUse(context.use), mThread(::GetCurrentThreadId()) {
    const std::lock_guard guard(gLock);
    mNext = std::exchange(gFirst, this);
}

WindowsTimerService::~WindowsTimerService() {
    StopAll();
    const std::lock_guard guard(gLock);
    WindowsTimerService** place = &gFirst;
    while (*place != this)
        place = &(*place)->mNext;
    *place = mNext;
}

TimerHandler* WindowsTimerService::HandlerOf(std::int32_t timerId) const {
    const auto found = mRunning.find(timerId);
    return found == mRunning.end() ? nullptr : found->second;
}

void CALLBACK WindowsTimerService::Fire(HWND, UINT, UINT_PTR timerId, DWORD) {
    // The queue may still hold a message of a timer that was stopped.
    const DWORD thread = ::GetCurrentThreadId();
    TimerHandler* handler = nullptr;
    ModuleUse* use = nullptr;
    {
        const std::lock_guard guard(gLock);
        for (const auto* service = gFirst; service != nullptr && handler == nullptr; service = service->mNext) {
            if (service->mThread != thread) continue;
            handler = service->HandlerOf(static_cast<std::int32_t>(timerId));
            use = &service->mUse;
        }
    }
    if (handler == nullptr) return;
    use->Begin();
    handler->TimerProc();
    use->End();
}

std::int32_t WindowsTimerService::Start(std::uint32_t delayMs, TimerHandler& handler) {
    const UINT_PTR id = ::SetTimer(nullptr, 0, delayMs, Fire);
    if (id == 0) return 0;
    const auto timerId = static_cast<std::int32_t>(id);
    try {
        mRunning[timerId] = &handler;
    } catch (const std::bad_alloc&) {
        ::KillTimer(nullptr, id);
        return 0;
    }
    mUse.Begin();
    mApartment.Begin();
    return timerId;
}

void WindowsTimerService::Stop(std::int32_t timerId) {
    if (mRunning.erase(timerId) == 0) return;
    const auto id = static_cast<UINT_PTR>(static_cast<std::uint32_t>(timerId));
    ::KillTimer(nullptr, id);
    if (mRunning.empty()) mApartment.End();
    mUse.End();
}

void WindowsTimerService::StopAll() {
    while (!mRunning.empty())
        Stop(mRunning.begin()->first);
}

void WindowsTimerService::EndThread() noexcept {
    while (!mRunning.empty()) {
        const auto [timerId, handler] = *mRunning.begin();
        handler->ThreadEnds();
        Stop(timerId);
    }
}

}  // namespace kwo::platform::windows
