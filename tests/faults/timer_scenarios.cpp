#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>

#include "scenario.h"
#include "timer/timer.h"

namespace kwo::fault_tests {

namespace {

using timer::AlarmCallback;
using timer::KWOTimer;
using timer::TickCallback;
using timers::kAlarm;
using timers::kTick;

constexpr std::int16_t kTrue = -1;
constexpr std::int32_t kIntervalMs = 500;
constexpr std::int32_t kTag = 7;
constexpr std::int32_t kOtherTag = 8;
/// For such a date a timer makes and reads a text, which can fail.
constexpr Date kLastSecondOfADay{46343.99999};

/// The object around a timer. It ends with its last reference.
class Shell final : public timer::TimerShell {
public:
    Shell(component::Component& component, std::string& told) : timer(component, *this), mTold(told) {}

    void Tick() override {
        const platform::simulated::UncountedMemory memory;
        mTold += "event Tick; ";
    }
    void Alarm(std::int32_t& itemData, Date&) override {
        const platform::simulated::UncountedMemory memory;
        mTold += "event Alarm " + std::to_string(itemData) + "; ";
    }
    void AddShellReference() noexcept override { ++references; }
    void ReleaseShell() noexcept override {
        if (--references == 0) delete this;
    }

    int references = 1;
    KWOTimer timer;

private:
    std::string& mTold;
};

/// A callback that is an object of the host.
class Callback final : public TickCallback, public AlarmCallback {
public:
    explicit Callback(std::shared_ptr<SimulatedObject> object) : mObject(std::move(object)) {}

    void Tick() override { mObject->Call(u"Tick"); }
    void Alarm(std::int32_t& itemData, Date& newDateTime) override {
        platform::Argument arguments[] = {{itemData}, {newDateTime}};
        mObject->Notify(u"Alarm", arguments);
        newDateTime = std::get<Date>(arguments[1].value);
    }

private:
    std::shared_ptr<SimulatedObject> mObject;
};

struct TimerStage : Stage {
    TimerStage() {
        callback->SetMethod(u"Tick", [this](std::span<Variant>) -> Variant {
            told += "Tick; ";
            return platform::Empty{};
        });
        callback->SetMethod(u"Alarm", [this](std::span<Variant> given) -> Variant {
            told += "Alarm " + Shown(given[0]) + "; ";
            given[1] = newDate;
            return platform::Empty{};
        });
        shell = new Shell(*component, told);
    }
    ~TimerStage() override { Release(); }
    KWOTimer& Timer() { return shell->timer; }
    std::shared_ptr<Callback> NewCallback() { return std::make_shared<Callback>(callback); }
    std::string State() override {
        const timers::TimerTable& table = component->timers.Table();
        EXPECT_EQ(table.EarliestDue(), EarliestDue()) << "a row is lost";
        std::string state = std::to_string(table.ActiveCount()) + " rows, " +
                            std::to_string(component->timers.InstanceCount()) + " timers";
        if (shell == nullptr) return state;
        EXPECT_EQ(shell->references - 1, table.ActiveCount()) << "each row holds its timer once";
        return state + ", enabled " + std::to_string(Timer().Enabled());
    }
    /// As the rows themselves tell it.
    std::int64_t EarliestDue() const {
        const timers::TimerTable& table = component->timers.Table();
        std::int64_t earliest = timers::DueIndex::kNever;
        for (std::int32_t row = 1; row <= table.SlotCount(); ++row) {
            if (table.Row(row).type != timers::kFree) earliest = std::min(earliest, table.Row(row).due.scaled);
        }
        return earliest;
    }
    void Release() override {
        if (shell != nullptr) {
            Timer().CancelTimers();
            std::exchange(shell, nullptr)->ReleaseShell();
        }
        callback.reset();
    }
    void Start() {
        Timer().SetInterval(kIntervalMs);
        Timer().SetEnabled(kTrue);
    }
    void Alarm(std::int32_t tag = kTag) { Timer().AddRelativeAlarm(kIntervalMs, tag); }
    /// Time passes until the next tick or alarm; returns what was delivered.
    std::string Wait() {
        desktop.Advance(kIntervalMs + 1);
        desktop.messages.ProcessPending();
        return std::exchange(told, {});
    }

    std::string told;
    Date newDate;
    std::shared_ptr<SimulatedObject> callback = Make(u"Clock", "clock");
    Shell* shell = nullptr;
};

/// The error that every failure of these members becomes.
Expected RaisesTypeMismatch() {
    return [](const Failure&, const Reference& reference) {
        return std::vector{Outcome{"", "13 : Type mismatch", reference.clean.saved, "", kAnything}};
    };
}

/// The handler fails and nobody can be told: what it would have got is cancelled.
Expected IsCancelled(std::string answer) {
    return Answers(std::move(answer), "0 rows, 1 timers, enabled -1");
}

template <class Body>
Scenario Timed(std::string name, std::vector<std::string> members, void (*prepare)(TimerStage&), Body run,
               std::vector<Rule> rules, Expected onAllocation = IsOutOfMemory(),
               std::function<void(Stage&)> refresh = {}) {
    // Without the counter the clock reads the tick count, and without a timer of the system the rows wait.
    rules.push_back({"QueryPerformanceFrequency", Unnoticed()});
    rules.push_back({"KillTimer", Unnoticed()});
    rules.push_back({"SetTimer", Unnoticed()});
    return {std::move(name),     std::move(members), Prepared<TimerStage>(prepare),
            On<TimerStage>(run), std::move(rules),   std::move(onAllocation),
            std::move(refresh)};
}

void Nothing(TimerStage&) {}

void WithAll(TimerStage& stage) {
    stage.Timer().SetTimerEvents(stage.NewCallback());
    stage.Timer().SetAlarmEvents(stage.NewCallback());
    stage.Start();
    stage.Alarm(kTag);
    stage.Alarm(kOtherTag);
}

std::string Forced(TimerStage& stage, std::int32_t type) {
    std::int32_t tag = kTag;
    Date newDate;
    Member([&] { stage.Timer().TimerTick(type, tag, newDate); });
    return std::exchange(stage.told, {}) + Shown(Variant(newDate));
}

}  // namespace

std::vector<Scenario> TimerScenarios() {
    const Expected callbackFails = Raises();
    // A tick that was cancelled, or waits for a timer of the system, goes on when Interval is set.
    const auto startsAgain = By<TimerStage>([](TimerStage& stage) { stage.Timer().SetInterval(kIntervalMs); });
    const std::vector<Rule> ofAlarms = {
        {"VariantChangeType", Either(RaisesTypeMismatch(), Raises())},
        {"VarDateFromStr", RaisesTypeMismatch()},
    };
    return {
        Timed(
            "ATimerIsCreated", {}, Nothing,
            [](TimerStage& stage) {
                Shell* const made = Member([&] { return new Shell(*stage.component, stage.told); });
                made->ReleaseShell();
                return "created";
            },
            {}, IsOutOfMemoryAndStaysAsItWas()),
        Timed(
            "TheFirstTimerIsCreated", {},
            [](TimerStage& stage) {
                stage.Release();
                stage.component.emplace(stage.desktop.Services());
            },
            [](TimerStage& stage) {
                Shell* const made = Member([&] { return new Shell(*stage.component, stage.told); });
                made->ReleaseShell();
                return "created";
            },
            {}, IsOutOfMemoryAndStaysAsItWas()),
        Timed(
            "ATickIsEnabled", {"KWOTimer.get Enabled", "KWOTimer.let Enabled"},
            [](TimerStage& stage) { stage.Timer().SetInterval(kIntervalMs); },
            [](TimerStage& stage) {
                Member([&] { stage.Timer().SetEnabled(kTrue); });
                return std::to_string(stage.Timer().Enabled());
            },
            {}, IsOutOfMemoryAndStaysAsItWas()),
        Timed(
            "ATickIsEnabledInAFullTable", {"KWOTimer.let Enabled"},
            [](TimerStage& stage) {
                stage.Timer().SetInterval(kIntervalMs);
                stage.Alarm(kTag);
                stage.Alarm(kOtherTag);
            },
            [](TimerStage& stage) {
                Member([&] { stage.Timer().SetEnabled(kTrue); });
                return std::to_string(stage.Timer().Enabled());
            },
            {}, IsOutOfMemoryAndStaysAsItWas()),
        Timed(
            "ATickIsDisabled", {"KWOTimer.let Enabled"}, [](TimerStage& stage) { stage.Start(); },
            [](TimerStage& stage) {
                Member([&] { stage.Timer().SetEnabled(0); });
                return std::to_string(stage.Timer().Enabled());
            },
            {}),
        Timed(
            "AnIntervalStartsTheTick", {"KWOTimer.get Interval", "KWOTimer.let Interval"},
            [](TimerStage& stage) { stage.Timer().SetEnabled(kTrue); },
            [](TimerStage& stage) {
                Member([&] { stage.Timer().SetInterval(kIntervalMs); });
                return std::to_string(stage.Timer().Interval());
            },
            {}),
        Timed(
            "AnIntervalOfZeroStopsTheTick", {"KWOTimer.let Interval"}, [](TimerStage& stage) { stage.Start(); },
            [](TimerStage& stage) {
                Member([&] { stage.Timer().SetInterval(0); });
                return std::to_string(stage.Timer().Interval());
            },
            {}),
        Timed(
            "AnAlarmIsAdded", {"KWOTimer.AddAlarm"}, Nothing,
            [](TimerStage& stage) {
                Member([&] { stage.Timer().AddAlarm(kLastSecondOfADay, kTag); });
                return "added";
            },
            ofAlarms, IsOutOfMemoryAndStaysAsItWas()),
        Timed(
            "AnAlarmReplacesAnother", {"KWOTimer.AddAlarm"}, [](TimerStage& stage) { stage.Alarm(); },
            [](TimerStage& stage) {
                Member([&] { stage.Timer().AddAlarm({0.75}, kTag); });
                return "added";
            },
            {}),
        Timed("ManyAlarmsAreAdded", {"KWOTimer.AddRelativeAlarm"}, Nothing,
              [](TimerStage& stage) {
                  for (std::int32_t tag = 1; tag <= 40; ++tag)
                      Member([&] { stage.Timer().AddRelativeAlarm((50 - tag) * kIntervalMs, tag); });
                  return "added";
              },
              {}),
        Timed(
            "ARelativeAlarmIsAdded", {"KWOTimer.AddRelativeAlarm"}, Nothing,
            [](TimerStage& stage) {
                Member([&] { stage.Timer().AddRelativeAlarm(kIntervalMs, kTag); });
                return "added";
            },
            {}, IsOutOfMemoryAndStaysAsItWas()),
        Timed("EverythingIsCancelled", {"KWOTimer.CancelTimers"}, WithAll,
              [](TimerStage& stage) {
                  Member([&] { stage.Timer().CancelTimers(); });
                  return "cancelled";
              },
              {}),
        Timed("AnAlarmIsCancelled", {"KWOTimer.CancelTimers"}, WithAll,
              [](TimerStage& stage) {
                  Member([&] { stage.Timer().CancelTimers(kAlarm, kTag); });
                  return "cancelled";
              },
              {}),
        Timed("CallbacksAreSet",
              {"KWOTimer.get TimerEvents", "KWOTimer.set TimerEvents", "KWOTimer.get AlarmEvents",
               "KWOTimer.set AlarmEvents"},
              Nothing,
              [](TimerStage& stage) {
                  const auto callbackGiven = stage.NewCallback();
                  Member([&] {
                      stage.Timer().SetTimerEvents(callbackGiven);
                      stage.Timer().SetAlarmEvents(callbackGiven);
                  });
                  const bool kept =
                      stage.Timer().TimerEvents() == callbackGiven && stage.Timer().AlarmEvents() == callbackGiven;
                  return kept ? "kept" : "not kept";
              },
              {}),
        Timed(
            "ATickIsForced", {"KWOTimer.TimerTick", "IKWOTimer.Tick"},
            [](TimerStage& stage) { stage.Timer().SetTimerEvents(stage.NewCallback()); },
            [](TimerStage& stage) { return Forced(stage, kTick); }, {{"Clock.Call Tick", callbackFails}}),
        Timed(
            "AnAlarmIsForced", {"KWOTimer.TimerTick", "IKWOAlarm.Alarm"},
            [](TimerStage& stage) {
                stage.newDate = {46343.5};
                stage.Timer().SetAlarmEvents(stage.NewCallback());
            },
            [](TimerStage& stage) { return Forced(stage, kAlarm); }, {{"Clock.Call Alarm", callbackFails}}),
        Timed(
            "ATickIsForcedWhileATimerWasRefused", {"KWOTimer.TimerTick", "KWOTimer.Tick"},
            [](TimerStage& stage) {
                stage.desktop.FailCall("SetTimer", 1, 8);
                stage.Start();
            },
            [](TimerStage& stage) { return Forced(stage, kTick); }, {}),
        Timed(
            "TicksArriveAsEvents", {"KWOTimer.Tick"}, [](TimerStage& stage) { stage.Start(); },
            [](TimerStage& stage) { return stage.Wait(); }, {}, IsOutOfMemory(), startsAgain),
        Timed(
            "TicksArriveAtTheCallback", {"IKWOTimer.Tick"},
            [](TimerStage& stage) {
                stage.Timer().SetTimerEvents(stage.NewCallback());
                stage.Start();
            },
            [](TimerStage& stage) { return stage.Wait(); }, {{"Clock.Call Tick", IsCancelled(""), IsCancelled("")}},
            IsOutOfMemory(), startsAgain),
        Timed(
            "AlarmsArriveAsEvents", {"KWOTimer.Alarm"},
            [](TimerStage& stage) {
                stage.Alarm();
                stage.Alarm(kOtherTag);
            },
            [](TimerStage& stage) { return stage.Wait(); }, {}),
        Timed(
            "AnAlarmArrivesAgain", {"IKWOAlarm.Alarm"},
            [](TimerStage& stage) {
                stage.newDate = kLastSecondOfADay;
                stage.Timer().SetAlarmEvents(stage.NewCallback());
                stage.Alarm();
            },
            [](TimerStage& stage) { return stage.Wait(); },
            {{"Clock.Call Alarm", Answers("", "0 rows, 1 timers, enabled 0"),
              Answers("", "0 rows, 1 timers, enabled 0")},
             {"VariantChangeType", Answers("Alarm 7; ", "0 rows, 1 timers, enabled 0"),
              Answers("Alarm 7; ", "0 rows, 1 timers, enabled 0")},
             {"VarDateFromStr", Answers("Alarm 7; ", "0 rows, 1 timers, enabled 0"),
              Answers("Alarm 7; ", "0 rows, 1 timers, enabled 0")}},
            Either(Answers("Alarm 7; ", "0 rows, 1 timers, enabled 0"), Unnoticed())),
        Timed(
            "AReleasedTimerLivesUntilItsLastAlarm", {"KWOTimer.Alarm"}, [](TimerStage& stage) { stage.Alarm(); },
            [](TimerStage& stage) {
                if (stage.shell != nullptr) std::exchange(stage.shell, nullptr)->ReleaseShell();
                return stage.Wait();
            },
            {}),
    };
}

}  // namespace kwo::fault_tests
