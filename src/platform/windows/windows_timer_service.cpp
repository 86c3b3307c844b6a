#include "platform/windows/windows_timer_service.h"

#include <windows.h>

#include <map>
#include <mutex>
#include <optional>
#include <utility>

#include "platform/windows/lock.h"

namespace kwo::platform::windows {

namespace {

struct Target {
    TimerHandler* handler;
    ModuleUse* use;
};

/// Whom a timer calls: the system tells its callback nothing but the identifier, and two threads may have the same.
class Targets {
public:
    static Targets& Instance() {
        static Targets targets;
        return targets;
    }
    void Add(UINT_PTR timerId, const Target& target) {
        const std::lock_guard guard(mLock);
        mTargets[Key(timerId)] = target;
    }
    void Remove(UINT_PTR timerId) {
        const std::lock_guard guard(mLock);
        mTargets.erase(Key(timerId));
    }
    std::optional<Target> Find(UINT_PTR timerId) {
        const std::lock_guard guard(mLock);
        const auto found = mTargets.find(Key(timerId));
        return found == mTargets.end() ? std::nullopt : std::optional(found->second);
    }

private:
    static std::pair<DWORD, UINT_PTR> Key(UINT_PTR timerId) { return {::GetCurrentThreadId(), timerId}; }

    Lock mLock;
    std::map<std::pair<DWORD, UINT_PTR>, Target> mTargets;
};

void CALLBACK Fire(HWND, UINT, UINT_PTR timerId, DWORD) {
    // The message of a timer that was stopped in the meantime may still have been in the queue.
    const auto target = Targets::Instance().Find(timerId);
    if (!target) return;
    target->use->Begin();
    target->handler->TimerProc();
    target->use->End();
}

}  // namespace

std::int32_t WindowsTimerService::Start(std::uint32_t delayMs, TimerHandler& handler) {
    const UINT_PTR id = ::SetTimer(nullptr, 0, delayMs, Fire);
    if (id == 0) return 0;
    Targets::Instance().Add(id, {&handler, &mUse});
    mRunning.insert(static_cast<std::int32_t>(id));
    mUse.Begin();
    return static_cast<std::int32_t>(id);
}

void WindowsTimerService::Stop(std::int32_t timerId) {
    if (mRunning.erase(timerId) == 0) return;
    const auto id = static_cast<UINT_PTR>(static_cast<std::uint32_t>(timerId));
    ::KillTimer(nullptr, id);
    Targets::Instance().Remove(id);
    mUse.End();
}

void WindowsTimerService::StopAll() {
    while (!mRunning.empty())
        Stop(*mRunning.begin());
}

}  // namespace kwo::platform::windows
