#include "platform/simulated/simulated_timer_service.h"

#include <algorithm>
#include <string>

#include "platform/simulated/simulated_clock.h"

namespace kwo::platform::simulated {

namespace {

constexpr std::uint32_t kShortestMs = 1;

}  // namespace

SimulatedTimerService::SimulatedTimerService(World& world)
    : mWorld(world), mClock(world.services.clock), mMessages(world.services.messages) {
    world.faults.Declare({{"SetTimer", {8}}, {"KillTimer", {1444}}});
}

std::int32_t SimulatedTimerService::Start(std::uint32_t delayMs, TimerHandler& handler) {
    const Call call(mWorld, "SetTimer");
    if (call.Fails()) {
        mWorld.log.Add("SetTimer " + std::to_string(delayMs) + " -> 0");
        return 0;
    }
    const std::int32_t id = mNextId--;
    mWorld.log.Add("SetTimer " + std::to_string(delayMs) + " -> " + std::to_string(id));
    const std::int64_t period = Milliseconds::Whole(std::max(delayMs, kShortestMs)).scaled;
    Timer& timer = mTimers[id];
    timer = {&handler, period, mClock.Elapsed().scaled + period, {}};
    Post(id, timer);
    return id;
}

void SimulatedTimerService::Stop(std::int32_t timerId) {
    const Call call(mWorld, "KillTimer");
    mWorld.log.Add("KillTimer " + std::to_string(timerId));
    // The handler is not called again, even if the system refuses.
    call.Fails();
    const auto found = mTimers.find(timerId);
    if (found == mTimers.end()) return;
    mMessages.Withdraw(found->second.message);
    mTimers.erase(found);
}

void SimulatedTimerService::EndThread() {
    while (!mTimers.empty()) {
        const auto [timerId, timer] = *mTimers.begin();
        timer.handler->ThreadEnds();
        Stop(timerId);
    }
}

void SimulatedTimerService::Post(std::int32_t timerId, Timer& timer) {
    timer.message =
        mMessages.PostAt(Milliseconds{timer.due - mClock.Elapsed().scaled}, [this, timerId] { Expire(timerId); });
}

void SimulatedTimerService::Expire(std::int32_t timerId) {
    Timer& timer = mTimers.at(timerId);
    const std::int64_t late = mClock.Elapsed().scaled - timer.due;
    timer.due += (late / timer.period + 1) * timer.period;
    Post(timerId, timer);
    const CountedMemory counted;
    timer.handler->TimerProc();
}

}  // namespace kwo::platform::simulated
