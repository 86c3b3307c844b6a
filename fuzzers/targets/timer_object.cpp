// A timer object with callbacks that fail, call it again, write into their arguments and release each other, on a
// desktop whose clocks jump and whose timers are refused.

#include "timer/timer.h"

#include <memory>
#include <optional>
#include <set>

#include "component/component.h"
#include "platform/component_error.h"
#include "platform/simulated/simulated_desktop.h"
#include "target.h"

namespace kwo::timer {
namespace {

using timers::kAlarm;
using timers::kFree;
using timers::kTick;

class Session;

/// The object around the timer, and a callback object: both do as the input says.
class Callee final : public TimerShell {
public:
    explicit Callee(Session& session) : mSession(session) {}
    void Tick() override;
    void Alarm(std::int32_t& itemData, platform::Date& newDateTime) override;
    void AddShellReference() noexcept override { ++references; }
    void ReleaseShell() noexcept override { --references; }

    int references = 0;

private:
    Session& mSession;
};

class Session {
public:
    explicit Session(fuzz::Input& theInput) : input(theInput) { timer.emplace(mComponent, mShell); }

    void Operate() {
        switch (input.Below(12)) {
            case 0: {
                const auto value =
                    static_cast<std::int16_t>(input.Once(8) ? input.Bits<std::int16_t>() : -input.Below(2));
                timer->SetEnabled(value);
                KWO_HOLDS(timer->Enabled() == value);
                break;
            }
            case 1: {
                const std::int32_t value = input.Once(4) ? input.Whole<std::int32_t>() : input.Byte();
                timer->SetInterval(value);
                KWO_HOLDS(timer->Interval() == value);
                break;
            }
            case 2:
                timer->AddAlarm(AnyDate(), input.Below(4));
                break;
            case 3:
            case 4: {
                const std::int32_t delay = input.Once(4) ? input.Whole<std::int32_t>() : input.Byte();
                timer->AddRelativeAlarm(delay, input.Below(4));
                break;
            }
            case 5: {
                const std::int32_t type = input.Below(4);
                timer->CancelTimers(type, input.Below(4));
                break;
            }
            case 6:
                timer->SetTimerEvents(input.Flag() ? std::make_shared<Callee>(*this) : nullptr);
                break;
            case 7:
                timer->SetAlarmEvents(input.Flag() ? std::make_shared<Callee>(*this) : nullptr);
                break;
            case 8: {
                std::int32_t type = input.Below(4);
                std::int32_t tag = input.Below(4);
                platform::Date date;
                timer->TimerTick(type, tag, date);
                break;
            }
            case 9:
                Jump();
                break;
            default:
                Pass(input.Byte());
                break;
        }
    }
    /// What a callback does.
    void Called() {
        constexpr int kDeepest = 3;
        if (mDepth >= kDeepest) return;
        ++mDepth;
        const auto leave = std::shared_ptr<void>(nullptr, [this](void*) { --mDepth; });
        switch (input.Below(8)) {
            case 5:
                Raise(input.Whole<std::int32_t>());
            case 6:
            case 7:
                OperateOnce();
                break;
            default:
                break;
        }
    }
    platform::Date AnyDate() {
        switch (input.Below(4)) {
            case 0:
                return {mDesktop.clock.Now().days + input.Byte() / 86'400.0};
            case 1:
                return {input.Byte() / 256.0};
            case 2:
                return {input.Real()};
            default:
                return {};
        }
    }
    /// One operation, which may raise what a callback raised or what a timer raises itself.
    void OperateOnce() {
        try {
            Operate();
        } catch (const platform::ComponentError& error) {
            KWO_HOLDS(mRaised.contains(error.number));
        }
    }
    void CheckRows() {
        const timers::TimerTable& table = mComponent.timers.Table();
        int used = 0;
        int ticks = 0;
        for (std::int32_t number = 1; number <= table.SlotCount(); ++number) {
            const timers::TimerRow& row = table.Row(number);
            used += row.type != kFree ? 1 : 0;
            ticks += row.type == kTick ? 1 : 0;
        }
        KWO_HOLDS(used == table.ActiveCount() && used == mShell.references);
        KWO_HOLDS(ticks <= 1);
        KWO_HOLDS(ticks == 0 || (timer->Enabled() != 0 && timer->Interval() > 0));
        KWO_HOLDS(mDesktop.timers.Running() <= 1);
        if (used > 0) KWO_HOLDS(mComponent.timers.TimerId() != 0 || mRefused);
        mDesktop.log.Clear();
    }
    /// An alarm still arrives, whatever was before; afterwards nothing is left.
    void End() {
        mCalm = true;
        mDesktop.faults.Clear();
        timer->CancelTimers();
        KWO_HOLDS(mComponent.timers.Table().ActiveCount() == 0 && mShell.references == 0);
        timer->AddRelativeAlarm(20, 77);
        Pass(40);
        KWO_HOLDS(mLastAlarm == 77);
        timer.reset();
        KWO_HOLDS(mComponent.timers.InstanceCount() == 0);
        KWO_HOLDS(mDesktop.timers.Running() == 0);
    }

    void Alarmed(std::int32_t tag) { mLastAlarm = tag; }
    bool IsCalm() const { return mCalm; }

    fuzz::Input& input;
    std::optional<KWOTimer> timer;

private:
    [[noreturn]] void Raise(std::int32_t number) {
        if (number == 0) number = 1;
        mRaised.insert(number);
        platform::Raise(number, u"callback", u"refused");
    }
    void Pass(int ms) {
        for (int passed = 0; passed < ms; passed += 10) {
            mDesktop.Advance(10);
            mDesktop.messages.ProcessPending();
        }
    }
    void Jump() {
        switch (input.Below(4)) {
            case 0:
                mDesktop.clock.SetNow({static_cast<double>(input.Bits<std::int16_t>()) + 40'000});
                break;
            case 1:
                mDesktop.Advance(std::int64_t{input.Bits<std::uint32_t>()});
                mDesktop.messages.ProcessPending();
                break;
            case 2:
                mDesktop.FailCall("SetTimer", 1 + input.Below(3), 8);
                mRefused = true;
                break;
            default:
                mDesktop.faults.Clear();
                break;
        }
    }

    // In this order: the timer's rows hold the shell, and the component ends before the desktop.
    platform::simulated::SimulatedDesktop mDesktop;
    Callee mShell{*this};
    component::Component mComponent{mDesktop.Services()};
    std::set<std::int32_t> mRaised = {6, 13};
    std::int32_t mLastAlarm = 0;
    int mDepth = 0;
    bool mRefused = false;
    bool mCalm = false;
};

void Callee::Tick() {
    if (!mSession.IsCalm()) mSession.Called();
}

void Callee::Alarm(std::int32_t& itemData, platform::Date& newDateTime) {
    mSession.Alarmed(itemData);
    if (mSession.IsCalm()) return;
    if (mSession.input.Once(4)) itemData = mSession.input.Below(4);
    if (mSession.input.Once(4)) newDateTime = mSession.AnyDate();
    mSession.Called();
}

KWO_FUZZ_TARGET(timer_object) {
    constexpr int kMostOperations = 80;
    Session session(input);
    for (int operation = 0; operation < kMostOperations && !input.IsEmpty(); ++operation) {
        session.OperateOnce();
        session.CheckRows();
    }
    session.End();
}

}  // namespace
}  // namespace kwo::timer
