#pragma once

#include <functional>
#include <map>
#include <utility>

#include "platform/clock.h"
#include "platform/message_loop.h"
#include "platform/simulated/world.h"

namespace kwo::platform::simulated {

/// The message queue of the one thread of the desktop.
///
///     desktop.PostAt(200, [&] { button.MouseUp(750, 300); });
///     desktop.messages.ProcessPending();  // nothing yet: it is due in 200 ms
///
/// A message is an action; it runs when the queue is processed at or after the time it is due, earlier ones first,
/// those of one time in the order in which they were posted. An action may process the queue itself.
/// The log shows `Pump` for each ProcessPending, and `WaitEx 100 mask=0xFF flags=0x2` or `Wait 100 mask=0xFF`. A wait
/// that fails returns at once.
class SimulatedMessageLoop final : public MessageLoop {
public:
    explicit SimulatedMessageLoop(World& world);

    bool ProcessPending() override;
    /// A wait moves the clock to the next new message, else by the whole timeout.
    /// A message is new until a wait has returned for it or the queue is processed. Waiting for ever for nothing
    /// throws std::logic_error.
    void WaitForInputEx(std::uint32_t timeoutMs, std::uint32_t wakeMask, std::uint32_t flags) override;
    void WaitForInput(std::uint32_t timeoutMs, std::uint32_t wakeMask) override;

    /// Names a message that was posted.
    using Order = std::pair<std::int64_t, std::int64_t>;  ///< due time (scaled milliseconds), number

    /// Due now, behind the messages of this moment.
    Order Post(std::function<void()> action) { return PostAt(Milliseconds{}, std::move(action)); }
    /// Due `delay` from now.
    Order PostAt(Milliseconds delay, std::function<void()> action);
    /// The same in whole milliseconds.
    Order PostAt(std::int64_t delayMs, std::function<void()> action) {
        return PostAt(Milliseconds::Whole(delayMs), std::move(action));
    }
    /// Removes a message that has not run yet.
    void Withdraw(const Order& order) { mMessages.erase(order); }
    /// Asks the host's own loop to end. Nothing takes the request back.
    void RequestQuit();
    /// Whether RequestQuit was called.
    bool QuitRequested() const { return mQuit; }
    /// Messages that have not run yet, due or not.
    std::size_t Waiting() const { return mMessages.size(); }

private:
    struct Message {
        std::function<void()> action;
        bool news = true;
    };

    void Wait(std::uint32_t timeoutMs, std::uint32_t wakeMask);

    World& mWorld;
    SimulatedClock& mClock;
    std::map<Order, Message> mMessages;
    std::int64_t mPosted = 0;
    bool mQuit = false;
    bool mQuitIsNews = false;
};

}  // namespace kwo::platform::simulated
