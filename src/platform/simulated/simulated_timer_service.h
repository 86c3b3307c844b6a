#pragma once

#include <map>

#include "platform/simulated/simulated_message_loop.h"
#include "platform/simulated/world.h"
#include "platform/timer_service.h"

namespace kwo::platform::simulated {

/// Periodic timers whose messages come through the desktop's queue.
/// What a busy thread misses comes once, and keeps to the timer's own rhythm. A period of 0 is 1 ms. Identifiers count
/// down from 32767 and are not given twice.
/// The log shows `SetTimer 500 -> 32767` and `KillTimer 32767`. SetTimer can fail; a KillTimer that fails stops the
/// timer all the same.
class SimulatedTimerService final : public TimerService {
public:
    explicit SimulatedTimerService(World& world);

    std::int32_t Start(std::uint32_t delayMs, TimerHandler& handler) override;
    void Stop(std::int32_t timerId) override;

    /// The thread ends: every handler is told, and its timer stops.
    void EndThread();
    /// How many timers run now; 0 when nothing leaks.
    std::size_t Running() const { return mTimers.size(); }

private:
    struct Timer {
        TimerHandler* handler;
        std::int64_t period;  ///< scaled milliseconds, as is the next line
        std::int64_t due;
        SimulatedMessageLoop::Order message;
    };

    void Post(std::int32_t timerId, Timer& timer);
    void Expire(std::int32_t timerId);

    World& mWorld;
    SimulatedClock& mClock;
    SimulatedMessageLoop& mMessages;
    std::map<std::int32_t, Timer> mTimers;
    std::int32_t mNextId = 32767;
};

}  // namespace kwo::platform::simulated
