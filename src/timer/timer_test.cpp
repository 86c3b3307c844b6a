#include "timer/timer.h"

#include <limits>
#include <optional>

#include "platform/component_error.h"
#include "support/raised.h"
#include "timers/timer_fixture.h"

namespace kwo::timer {
namespace {

using platform::ComponentError;
using platform::Date;
using platform::Text;
using test_support::Raised;
using timers::kAlarm;
using timers::kTick;
using timers::RecordingOwner;
using timers::TimerTest;

constexpr std::int16_t kTrue = -1;

/// The object around a timer, and a host that listens to it.
class Shell final : public TimerShell {
public:
    explicit Shell(std::vector<std::string>& told) : mTold(told) {}

    void Tick() override {
        mTold.push_back("event Tick");
        if (onEvent) onEvent();
    }
    void Alarm(std::int32_t& itemData, Date& newDateTime) override {
        mTold.push_back("event Alarm " + std::to_string(itemData));
        if (newDate) newDateTime = *newDate;
        if (onEvent) onEvent();
    }
    void AddShellReference() noexcept override { ++references; }
    void ReleaseShell() noexcept override { --references; }

    std::function<void()> onEvent;
    std::optional<Date> newDate;
    int references = 0;

private:
    std::vector<std::string>& mTold;
};

class Callback final : public TickCallback, public AlarmCallback {
public:
    explicit Callback(std::vector<std::string>& told) : mTold(told) {}
    ~Callback() override {
        mTold.push_back("callback gone");
        if (onEnd) onEnd();
    }

    void Tick() override {
        mTold.push_back("callback Tick");
        if (onCall) onCall();
    }
    void Alarm(std::int32_t& itemData, Date& newDateTime) override {
        mTold.push_back("callback Alarm " + std::to_string(itemData));
        newDateTime = newDate;
        if (onCall) onCall();
    }

    std::function<void()> onCall;
    std::function<void()> onEnd;
    Date newDate;

private:
    std::vector<std::string>& mTold;
};

class Timer : public TimerTest {
protected:
    std::shared_ptr<Callback> MakeCallback() { return std::make_shared<Callback>(told); }
    bool HasTick() { return timers.Table().ActiveCount() == 1 && timers.Table().Row(1).type == kTick; }

    Shell shell{told};
    std::optional<KWOTimer> made{std::in_place, component, shell};
    KWOTimer& timer = *made;
};

TEST_F(Timer, BeginsSwitchedOffAndWithoutCallbacks) {
    EXPECT_EQ(timer.Enabled(), 0);
    EXPECT_EQ(timer.Interval(), 0);
    EXPECT_EQ(timer.AlarmEvents(), nullptr);
    EXPECT_EQ(timer.TimerEvents(), nullptr);
    EXPECT_EQ(timers.InstanceCount(), 1);
    EXPECT_EQ(component.ProgramName(), u"KWOUtil");
}

TEST_F(Timer, EndTakesItsRowsAndItsCount) {
    timer.SetTimerEvents(MakeCallback());
    timer.AddRelativeAlarm(100, 1);

    made.reset();

    EXPECT_EQ(timers.InstanceCount(), 0);
    EXPECT_EQ(timers.Table().ActiveCount(), 0);
    EXPECT_EQ(shell.references, 0);
    EXPECT_EQ(Told(), Lines{"callback gone"});
}

TEST_F(Timer, EndsAlthoughThePlatformTimerCannotBeStopped) {
    RecordingOwner stranger(told, "stranger");
    // Its own row is the last one, then that of somebody else.
    for (const bool alone : {true, false}) {
        if (!made) made.emplace(component, shell);
        made->AddRelativeAlarm(static_cast<std::int32_t>(100 + ElapsedMs()), 1);
        if (!alone) timers.AddTick(stranger, 100);
        desktop.FailCall("KillTimer", 1, platform::simulated::Faults::kNoMemory);

        made.reset();

        EXPECT_EQ(timers.InstanceCount(), 0);
        EXPECT_EQ(timers.Table().ActiveCount(), 0);
        EXPECT_EQ(shell.references, 0);
        EXPECT_EQ(stranger.references, 0);
    }
}

TEST_F(Timer, TicksWhenEnabledAfterTheInterval) {
    timer.SetInterval(100);
    EXPECT_FALSE(HasTick());
    timer.SetEnabled(kTrue);
    EXPECT_TRUE(HasTick());

    Pass(250);
    EXPECT_EQ(Told(), (Lines{"event Tick", "event Tick"}));
    EXPECT_EQ(shell.references, 1);
}

TEST_F(Timer, TicksWhenTheIntervalComesAfterEnabled) {
    timer.SetEnabled(kTrue);
    EXPECT_FALSE(HasTick());
    timer.SetInterval(100);

    EXPECT_TRUE(HasTick());
}

TEST_F(Timer, IntervalOfEitherEndIsKept) {
    constexpr std::int32_t kMost = std::numeric_limits<std::int32_t>::max();
    constexpr std::int32_t kLeast = std::numeric_limits<std::int32_t>::min();
    timer.SetEnabled(kTrue);

    timer.SetInterval(kMost);
    EXPECT_EQ(timer.Interval(), kMost);
    EXPECT_TRUE(HasTick());
    timer.SetInterval(1);
    EXPECT_TRUE(HasTick());
    timer.SetInterval(kLeast);
    EXPECT_EQ(timer.Interval(), kLeast);
    EXPECT_EQ(timer.Enabled(), 0);
    EXPECT_FALSE(HasTick());
}

TEST_F(Timer, IntervalThatIsNotPositiveSwitchesItOff) {
    for (const std::int32_t interval : {0, -1}) {
        timer.SetInterval(100);
        timer.SetEnabled(kTrue);

        timer.SetInterval(interval);

        EXPECT_EQ(timer.Enabled(), 0) << interval;
        EXPECT_EQ(timer.Interval(), interval);
        EXPECT_FALSE(HasTick());
    }
}

TEST_F(Timer, IntervalThatIsNotPositiveLeavesASwitchedOffTimerAlone) {
    timer.AddRelativeAlarm(100, 1);
    timer.SetInterval(-5);

    EXPECT_EQ(timer.Enabled(), 0);
    EXPECT_EQ(timers.Table().ActiveCount(), 1);
}

TEST_F(Timer, NewIntervalBeginsNow) {
    timer.SetInterval(100);
    timer.SetEnabled(kTrue);
    Pass(99);

    timer.SetInterval(100);
    Pass(99);
    EXPECT_EQ(Told(), Lines{});
    Pass(1);
    EXPECT_EQ(Told(), Lines{"event Tick"});
}

TEST_F(Timer, EnabledKeepsTheValueGiven) {
    timer.SetEnabled(1);
    EXPECT_EQ(timer.Enabled(), 1);

    timer.SetInterval(100);
    Pass(50);
    timer.SetEnabled(1);
    Pass(50);
    EXPECT_EQ(Told(), Lines{"event Tick"}) << "the same value changes nothing";

    timer.SetEnabled(kTrue);
    Pass(99);
    EXPECT_EQ(Told(), Lines{}) << "another true value starts again";
    timer.SetEnabled(0);
    Pass(200);
    EXPECT_EQ(Told(), Lines{});
}

TEST_F(Timer, EnabledDoesNotTouchAlarms) {
    timer.SetInterval(100);
    timer.SetEnabled(kTrue);
    timer.AddRelativeAlarm(150, 1);
    timer.SetEnabled(0);

    Pass(150);

    EXPECT_EQ(Told(), Lines{"event Alarm 1"});
}

TEST_F(Timer, CallbackTakesThePlaceOfTheEvent) {
    const auto callback = MakeCallback();
    timer.SetAlarmEvents(callback);
    timer.SetTimerEvents(callback);
    timer.SetInterval(100);
    timer.SetEnabled(kTrue);
    timer.AddRelativeAlarm(100, 4);

    Pass(100);
    EXPECT_EQ(Told(), (Lines{"callback Tick", "callback Alarm 4"}));

    timer.SetAlarmEvents(nullptr);
    timer.SetTimerEvents(nullptr);
    timer.AddRelativeAlarm(100, 5);
    Pass(100);
    EXPECT_EQ(Told(), (Lines{"event Tick", "event Alarm 5"}));
}

TEST_F(Timer, EachCallbackIsForItsOwnKind) {
    timer.SetAlarmEvents(MakeCallback());
    timer.SetInterval(100);
    timer.SetEnabled(kTrue);
    timer.AddRelativeAlarm(100, 4);

    Pass(100);

    EXPECT_EQ(Told(), (Lines{"event Tick", "callback Alarm 4"}));
}

TEST_F(Timer, NewDateOfAHandlerBringsTheAlarmAgain) {
    const auto callback = MakeCallback();
    callback->newDate = After(600'000);
    timer.SetAlarmEvents(callback);
    timer.AddRelativeAlarm(100, 4);

    PassBusy(100);
    EXPECT_EQ(Told(), Lines{"callback Alarm 4"});
    callback->newDate = {};
    PassBusy(599'800);
    EXPECT_EQ(Told(), Lines{});
    Pass(30'000);
    EXPECT_EQ(Told(), Lines{"callback Alarm 4"});
    EXPECT_EQ(timers.Table().ActiveCount(), 0);
}

TEST_F(Timer, FailingHandlerLosesItsRow) {
    timer.SetInterval(100);
    timer.SetEnabled(kTrue);
    timer.AddRelativeAlarm(150, 4);
    shell.onEvent = [] { platform::Raise(5, u"host", u"planned"); };

    Pass(1'000);

    EXPECT_EQ(Told(), (Lines{"event Tick", "event Alarm 4"}));
    EXPECT_EQ(timer.Enabled(), kTrue);
    EXPECT_EQ(shell.references, 0);
}

TEST_F(Timer, CancelOfEverythingLetsGoOfTheCallbacks) {
    timer.SetAlarmEvents(MakeCallback());
    timer.SetTimerEvents(MakeCallback());
    timer.AddRelativeAlarm(100, 4);

    timer.CancelTimers();

    EXPECT_EQ(timer.AlarmEvents(), nullptr);
    EXPECT_EQ(timer.TimerEvents(), nullptr);
    EXPECT_EQ(timers.Table().ActiveCount(), 0);
    EXPECT_EQ(Told(), (Lines{"callback gone", "callback gone"}));
}

TEST_F(Timer, CancelOfOneKindKeepsTheCallbacks) {
    const auto callback = MakeCallback();
    for (const std::int32_t type : std::initializer_list<std::int32_t>{kTick, kAlarm, 3, -1}) {
        timer.SetAlarmEvents(callback);
        timer.SetTimerEvents(callback);
        timer.CancelTimers(type, 0);
        EXPECT_EQ(timer.AlarmEvents(), callback) << type;
        EXPECT_EQ(timer.TimerEvents(), callback) << type;
    }
}

TEST_F(Timer, CancelOfAlarmsLooksAtTheTag) {
    timer.AddRelativeAlarm(100, 4);
    timer.AddRelativeAlarm(100, 5);
    timer.CancelTimers(kAlarm, 4);
    Pass(100);
    EXPECT_EQ(Told(), Lines{"event Alarm 5"});

    timer.AddRelativeAlarm(100, 4);
    timer.AddRelativeAlarm(100, 5);
    timer.CancelTimers(kAlarm);
    Pass(100);
    EXPECT_EQ(Told(), Lines{});
}

TEST_F(Timer, AlarmThatACallbackAddsAtItsEndIsCancelledWithTheOthers) {
    for (const bool forTicks : {true, false}) {
        auto callback = MakeCallback();
        callback->onEnd = [&] { timer.AddRelativeAlarm(100, 9); };
        if (forTicks) timer.SetTimerEvents(std::move(callback));
        if (!forTicks) timer.SetAlarmEvents(std::move(callback));
        timer.SetInterval(50);
        timer.SetEnabled(kTrue);

        timer.CancelTimers();

        EXPECT_EQ(timers.Table().ActiveCount(), 0) << forTicks;
        EXPECT_EQ(shell.references, 0) << forTicks;
    }
}

TEST_F(Timer, CallbackThatEndsSeesNoCallbackOfEitherKind) {
    for (const bool forTicks : {true, false}) {
        auto callback = MakeCallback();
        bool none = false;
        callback->onEnd = [&] { none = timer.TimerEvents() == nullptr && timer.AlarmEvents() == nullptr; };
        timer.SetTimerEvents(forTicks ? std::move(callback) : MakeCallback());
        timer.SetAlarmEvents(forTicks ? MakeCallback() : std::move(callback));

        timer.CancelTimers();

        EXPECT_TRUE(none) << forTicks;
    }
}

TEST_F(Timer, AlarmThatACallbackAddsAtTheTimersEndGoesWithTheTimer) {
    auto callback = MakeCallback();
    callback->onEnd = [&] { timer.AddRelativeAlarm(100, 9); };
    timer.SetAlarmEvents(std::move(callback));
    // Another timer, so that the last one's end does not sweep the table.
    const KWOTimer other(component, shell);

    made.reset();

    EXPECT_EQ(timers.Table().ActiveCount(), 0);
    EXPECT_EQ(shell.references, 0);
}

TEST_F(Timer, CallbackThatIsGivenToAnEndingTimerIsNotKept) {
    auto callback = MakeCallback();
    callback->onEnd = [&] {
        auto next = MakeCallback();
        next->onEnd = [&] { timer.AddRelativeAlarm(100, 9); };
        timer.SetTimerEvents(next);
        timer.SetAlarmEvents(std::move(next));
    };
    timer.SetAlarmEvents(std::move(callback));
    const KWOTimer other(component, shell);

    made.reset();

    EXPECT_EQ(timers.Table().ActiveCount(), 0);
    EXPECT_EQ(shell.references, 0);
}

TEST_F(Timer, CallbackMayTakeItselfAwayWhileItRuns) {
    auto callback = MakeCallback();
    callback->onCall = [&] {
        timer.CancelTimers();
        told.push_back("still here");
    };
    timer.SetTimerEvents(std::move(callback));
    timer.SetInterval(100);
    timer.SetEnabled(kTrue);

    Pass(300);

    EXPECT_EQ(Told(), (Lines{"callback Tick", "still here", "callback gone"}));
}

class CancelledTimerIntended : public Timer {};

TEST_F(CancelledTimerIntended, StaysEnabledUntilItsSettingsChange) {
    timer.SetInterval(100);
    timer.SetEnabled(kTrue);
    timer.CancelTimers(kTick);

    // A reader would expect False and 0.
    EXPECT_EQ(timer.Enabled(), kTrue);
    EXPECT_EQ(timer.Interval(), 100);
    timer.SetEnabled(kTrue);
    EXPECT_FALSE(HasTick());

    timer.SetEnabled(0);
    timer.SetEnabled(kTrue);
    EXPECT_TRUE(HasTick());
    timer.CancelTimers();
    timer.SetInterval(100);
    EXPECT_TRUE(HasTick());
}

TEST_F(Timer, TimerTickCanBeForced) {
    struct Case {
        std::int32_t type;
        Lines told;
    };
    const Case cases[] = {{kTick, {"event Tick"}}, {kAlarm, {"event Alarm 8"}}, {0, {}}, {3, {}}, {-1, {}}};
    shell.newDate = Date{12.5};
    for (const Case& row : cases) {
        std::int32_t type = row.type;
        std::int32_t itemData = 8;
        Date date;
        timer.TimerTick(type, itemData, date);
        EXPECT_EQ(Told(), row.told) << row.type;
        EXPECT_EQ(date.days, row.type == kAlarm ? 12.5 : 0) << row.type;
    }
    shell.onEvent = [] { platform::Raise(5, u"host", u"planned"); };
    std::int32_t type = kTick;
    std::int32_t itemData = 0;
    Date date;
    EXPECT_EQ(Raised([&] { timer.TimerTick(type, itemData, date); }).number, 5);
}

TEST_F(Timer, RelativeAlarmOfEitherEndIsKept) {
    timer.AddRelativeAlarm(std::numeric_limits<std::int32_t>::max(), 1);
    timer.AddRelativeAlarm(std::numeric_limits<std::int32_t>::min(), 2);

    Pass(1);
    EXPECT_EQ(Told(), Lines{"event Alarm 2"});
}

class RefusedTimerIntended : public Timer {};

TEST_F(RefusedTimerIntended, SettingsStayAndNoErrorIsRaised) {
    desktop.FailCall("SetTimer", 1, 1158);
    timer.SetInterval(100);
    timer.SetEnabled(kTrue);

    // A reader would expect an error, and False.
    EXPECT_EQ(timer.Interval(), 100);
    EXPECT_EQ(timer.Enabled(), kTrue);
    EXPECT_TRUE(HasTick());
    Pass(500);
    EXPECT_EQ(Told(), Lines{});
}

TEST_F(Timer, ForcedTickAsksAgainForATimerThatWasRefused) {
    desktop.FailCall("SetTimer", 1, 1158);
    timer.SetInterval(100);
    timer.SetEnabled(kTrue);
    ASSERT_EQ(timers.TimerId(), 0);
    std::int32_t type = kTick;
    std::int32_t itemData = 0;
    Date date;

    timer.TimerTick(type, itemData, date);
    EXPECT_NE(timers.TimerId(), 0);
    Pass(100);

    EXPECT_EQ(Told(), (Lines{"event Tick", "event Tick"}));
}

TEST_F(Timer, ForcedTickLeavesARunningTimerAndAnEmptyTableAlone) {
    std::int32_t type = kTick;
    std::int32_t itemData = 0;
    Date date;
    timer.TimerTick(type, itemData, date);
    EXPECT_EQ(PlatformCalls(), Lines{});
    timer.SetInterval(100);
    timer.SetEnabled(kTrue);
    PlatformCalls();

    timer.TimerTick(type, itemData, date);
    EXPECT_EQ(PlatformCalls(), Lines{});
}

class TimerErrorIntended : public Timer {
protected:
    static constexpr std::int32_t kTypeMismatch = 13;
    static constexpr double kNoDate = 3e6;
    static constexpr double kNoDay = 1e9;
    /// A message table whose one text is that of a relative alarm that fails.
    void InstallMessage(Text text) {
        desktop.components.Install(u"KWOInit.KWOInitialize", [this, text] {
            auto companion = desktop.MakeObject();
            companion->SetMethod(u"KWO_MsgTableSize",
                                 [](std::span<platform::Variant> given) -> platform::Variant {
                                     given[2] = given[3] = std::int32_t{1929};
                                     return true;
                                 },
                                 {u"ProgramName", u"MsgFilePath", u"IdxArrayStart", u"IdxArrayEnd", u"TextArraySize"});
            companion->SetMethod(u"KWO_MsgTableLoad",
                                 [text](std::span<platform::Variant> given) -> platform::Variant {
                                     auto texts = std::make_shared<platform::TextArray>();
                                     texts->lowerBound = 1929;
                                     texts->items = {text};
                                     given[2] = platform::ForeignRef(texts);
                                     return platform::Empty{};
                                 },
                                 {u"Language", u"IdxArray", u"TextArray"});
            return companion;
        });
    }
    /// A relative alarm that needs the date all the same, because its due time is 0.
    /// Today is too far off to be counted.
    void FailRelativeAlarm() {
        desktop.clock.SetNow({kNoDay});
        timer.AddRelativeAlarm(static_cast<std::int32_t>(-ElapsedMs()), 1);
    }
};

TEST_F(TimerErrorIntended, AlarmThatFailsEndsAsAMismatch) {
    timer.AddRelativeAlarm(100, 5);

    // A reader would expect "Error creating timer alarm." from "KWOTimer.AddAlarm".
    const ComponentError error = Raised([&] { timer.AddAlarm({kNoDate}, 5); });

    EXPECT_EQ(error.number, kTypeMismatch);
    EXPECT_NE(error.source, u"KWOTimer.AddAlarm");
    EXPECT_EQ(component.error.Saved().number, 0) << "nothing is saved";
    EXPECT_EQ(timers.Table().ActiveCount(), 0) << "the replaced alarm is gone";
}

TEST_F(TimerErrorIntended, EveryFailureOfAnAlarmEndsAsAMismatch) {
    desktop.Advance(platform::Milliseconds{std::numeric_limits<std::int64_t>::max() - desktop.clock.Elapsed().scaled});

    // A reader would expect an overflow (6) or the text of the alarm.
    desktop.clock.SetNow({kNow});
    const ComponentError error = Raised([&] { timer.AddAlarm(After(5'000), 5); });

    EXPECT_EQ(error.number, kTypeMismatch);
    EXPECT_EQ(component.error.Saved().number, 0);
    EXPECT_EQ(timers.Table().ActiveCount(), 0);
}

TEST_F(TimerErrorIntended, IntervalThatFailsEndsAsAMismatch) {
    desktop.Advance(platform::Milliseconds{std::numeric_limits<std::int64_t>::max() - desktop.clock.Elapsed().scaled});
    timer.SetEnabled(kTrue);

    // A reader would expect "Cannot create timer." from "KWOTimer.Interval (Let)".
    EXPECT_EQ(Raised([&] { timer.SetInterval(100); }).number, kTypeMismatch);
    EXPECT_EQ(timer.Interval(), 100);
    EXPECT_EQ(timer.Enabled(), kTrue);
    EXPECT_EQ(timers.Table().ActiveCount(), 0);
    timer.SetEnabled(0);
    EXPECT_EQ(Raised([&] { timer.SetEnabled(kTrue); }).number, 6) << "this one has no handler";
    EXPECT_EQ(timer.Enabled(), 0);
}

TEST_F(TimerErrorIntended, RelativeAlarmThatFailsEndsAsAMismatch) {
    InstallMessage(u"The alarm could not be set.");

    // A reader would expect that text.
    EXPECT_EQ(Raised([&] { FailRelativeAlarm(); }).number, kTypeMismatch);
    EXPECT_EQ(component.messages.KWO_GetMsg(1929), u"The alarm could not be set.") << "the table is loaded for it";
}

TEST_F(TimerErrorIntended, RelativeAlarmThatFailsWithoutACompanionTellsOfThat) {
    EXPECT_EQ(Raised([&] { FailRelativeAlarm(); }).number, 429);
}

TEST_F(TimerErrorIntended, TextThatIsAFlagTellsWhetherTheErrorIsReplaced) {
    component.error.KWO_SaveError({5, {}, u"an earlier one", {}, 0}, {.source = u"before", .replace = true});
    InstallMessage(u"False");
    const ComponentError attached = Raised([&] { FailRelativeAlarm(); });
    EXPECT_EQ(attached.number, 5) << "the first error wins";
    EXPECT_EQ(attached.source, u"before;KWOTimer.AddAlarm");

    made.reset();
    component::Component other(desktop.Services());
    other.error.KWO_SaveError({5, {}, u"an earlier one", {}, 0}, {.source = u"before", .replace = true});
    InstallMessage(u"1");
    KWOTimer second(other, shell);
    const ComponentError replaced =
        Raised([&] { second.AddRelativeAlarm(static_cast<std::int32_t>(-ElapsedMs()), 1); });
    EXPECT_EQ(replaced.number, 6) << "what the date failed with";
    EXPECT_EQ(replaced.source, u"KWOTimer.AddAlarm");
    EXPECT_EQ(replaced.description, other.error.Saved().description);
}

}  // namespace
}  // namespace kwo::timer
