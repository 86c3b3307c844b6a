#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <string>
#include <vector>

#include "component/component.h"
#include "platform/simulated/simulated_desktop.h"
#include "timers/timer_registry.h"

namespace kwo::timers {

/// An owner that records its ticks and alarms.
class RecordingOwner final : public TimerOwner {
public:
    using Handler = std::function<void(std::int32_t& type, std::int32_t& itemData, platform::Date& newDateTime)>;

    RecordingOwner(std::vector<std::string>& told, std::string name) : mTold(told), mName(std::move(name)) {}

    void TimerTick(std::int32_t& type, std::int32_t& itemData, platform::Date& newDateTime) override {
        mTold.push_back(mName + (type == kTick ? " tick" : " alarm " + std::to_string(itemData)));
        const Handler running = handler;
        if (running) running(type, itemData, newDateTime);
    }
    void AddOwnerReference() noexcept override { ++references; }
    void ReleaseOwner() noexcept override {
        if (--references == 0 && onLastRelease) onLastRelease();
    }

    Handler handler;
    std::function<void()> onLastRelease;
    int references = 0;

private:
    std::vector<std::string>& mTold;
    std::string mName;
};

/// The registry of a component on a simulated desktop whose clock stands at a quarter past nine.
class TimerTest : public testing::Test {
protected:
    using Lines = std::vector<std::string>;

    static constexpr std::int64_t kMillisecond = platform::Milliseconds::kScale;
    static constexpr double kToday = 46'342;  // 2026-11-16
    static constexpr double kMillisecondsPerDay = 86'400'000;
    static constexpr double kNow = kToday + 9.25 / 24;

    TimerTest() {
        desktop.Advance(5'000);
        desktop.clock.SetNow({kNow});
    }

    /// Time passes in small steps, as it does while a host waits for messages.
    void Pass(std::int64_t ms) {
        constexpr std::int64_t kStep = 1;
        for (std::int64_t passed = 0; passed < ms; passed += kStep) {
            desktop.Advance(kStep);
            desktop.messages.ProcessPending();
        }
    }
    /// Time passes in tenths of a millisecond and a rest.
    void PassScaled(std::int64_t scaled) {
        constexpr std::int64_t kStep = kMillisecond / 10;
        for (const std::int64_t end = desktop.clock.Elapsed().scaled + scaled; desktop.clock.Elapsed().scaled < end;) {
            desktop.Advance(platform::Milliseconds{std::min(kStep, end - desktop.clock.Elapsed().scaled)});
            desktop.messages.ProcessPending();
        }
    }
    /// Time passes without a message, then the queue is processed.
    void PassBusy(std::int64_t ms) {
        desktop.Advance(ms);
        desktop.messages.ProcessPending();
    }
    std::int64_t ElapsedMs() { return desktop.clock.Elapsed().scaled / platform::Milliseconds::kScale; }
    platform::Milliseconds DueIn(std::int64_t ms) {
        return {desktop.clock.Elapsed().scaled + platform::Milliseconds::Whole(ms).scaled};
    }
    static platform::Date After(double ms) { return {kNow + ms / kMillisecondsPerDay}; }
    /// The calls for platform timers since the last question.
    Lines PlatformCalls() {
        Lines calls;
        for (const std::string& line : desktop.log.Lines()) {
            if (line.starts_with("SetTimer") || line.starts_with("KillTimer")) calls.push_back(line);
        }
        desktop.log.Clear();
        return calls;
    }
    Lines Told() { return std::exchange(told, {}); }

    platform::simulated::SimulatedDesktop desktop;
    Lines told;
    // Before the component: its rows hold them.
    RecordingOwner a{told, "a"};
    RecordingOwner b{told, "b"};
    component::Component component{desktop.Services()};
    MKWOTimer& timers = component.timers;
};

}  // namespace kwo::timers
