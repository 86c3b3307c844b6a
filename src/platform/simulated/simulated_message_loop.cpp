#include "platform/simulated/simulated_message_loop.h"

#include <algorithm>
#include <stdexcept>
#include <string>

#include "platform/simulated/simulated_clock.h"

namespace kwo::platform::simulated {
namespace {

constexpr std::uint32_t kPostedMessage = 0x0008;
/// That ProcessPending goes on for.
constexpr Milliseconds kLongest = Milliseconds::Whole(50);
constexpr std::uint32_t kForEver = 0xFFFFFFFF;

}  // namespace

SimulatedMessageLoop::SimulatedMessageLoop(World& world) : mWorld(world), mClock(world.services.clock) {
    world.faults.Declare(
        {{"PeekMessage", {}}, {"MsgWaitForMultipleObjectsEx", {87}}, {"MsgWaitForMultipleObjects", {87}}});
}

bool SimulatedMessageLoop::ProcessPending() {
    const Call call(mWorld, "PeekMessage");
    mWorld.log.Add("Pump");
    mQuitIsNews = false;
    const std::int64_t end = mClock.Elapsed().scaled + kLongest.scaled;
    while (!mMessages.empty() && mMessages.begin()->first.first <= mClock.Elapsed().scaled) {
        const auto action = std::move(mMessages.extract(mMessages.begin()).mapped().action);
        action();
        if (mClock.Elapsed().scaled >= end) {
            for (auto& [order, message] : mMessages)
                message.news = true;
            break;
        }
    }
    return !mQuit;
}

void SimulatedMessageLoop::WaitForInputEx(std::uint32_t timeoutMs, std::uint32_t wakeMask, std::uint32_t flags) {
    const Call call(mWorld, "MsgWaitForMultipleObjectsEx");
    mWorld.log.Add("WaitEx " + std::to_string(timeoutMs) + " mask=" + Hex(wakeMask) + " flags=" + Hex(flags));
    if (!call.Fails()) Wait(timeoutMs, wakeMask);
}

void SimulatedMessageLoop::WaitForInput(std::uint32_t timeoutMs, std::uint32_t wakeMask) {
    const Call call(mWorld, "MsgWaitForMultipleObjects");
    mWorld.log.Add("Wait " + std::to_string(timeoutMs) + " mask=" + Hex(wakeMask));
    if (!call.Fails()) Wait(timeoutMs, wakeMask);
}

SimulatedMessageLoop::Order SimulatedMessageLoop::PostAt(Milliseconds delay, std::function<void()> action) {
    const Order order{mClock.Elapsed().scaled + delay.scaled, ++mPosted};
    mMessages.emplace(order, Message{std::move(action)});
    return order;
}

void SimulatedMessageLoop::RequestQuit() {
    mQuit = true;
    mQuitIsNews = true;
}

void SimulatedMessageLoop::Wait(std::uint32_t timeoutMs, std::uint32_t wakeMask) {
    const bool listens = (wakeMask & kPostedMessage) != 0;
    if (listens && mQuitIsNews) {
        mQuitIsNews = false;
        return;
    }
    const auto next =
        listens ? std::find_if(mMessages.begin(), mMessages.end(), [](const auto& entry) { return entry.second.news; })
                : mMessages.end();
    const std::int64_t now = mClock.Elapsed().scaled;
    const bool woken = next != mMessages.end() &&
                       (timeoutMs == kForEver || next->first.first <= now + Milliseconds::Whole(timeoutMs).scaled);
    if (!woken) {
        if (timeoutMs == kForEver) throw std::logic_error("a wait that nothing will ever end");
        mClock.Advance(timeoutMs);
        return;
    }
    mClock.Advance(Milliseconds{std::max<std::int64_t>(0, next->first.first - now)});
    for (auto& [order, message] : mMessages) {
        if (order.first <= mClock.Elapsed().scaled) message.news = false;
    }
}

}  // namespace kwo::platform::simulated
