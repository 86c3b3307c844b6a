#pragma once

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <memory>
#include <new>
#include <vector>

#include "component/component.h"
#include "platform/component_error.h"
#include "platform/simulated/simulated_desktop.h"
#include "timers/time_double.h"
#include "timers/timer_registry.h"

// The registry beside a table that follows the rules one by one and looks at every row every time.

namespace kwo::timers {

using platform::Date;
using platform::Milliseconds;

inline constexpr int kOwners = 4;
inline constexpr std::int64_t kScale = Milliseconds::kScale;
inline constexpr double kToday = 46'342;
inline constexpr double kMillisecondsPerDay = 86'400'000;

/// Time that both sides read; its counter counts ten-thousandths of a millisecond.
class TestClock final : public platform::Clock {
public:
    std::optional<std::int64_t> CounterFrequency() override { return 1'000 * kScale; }
    std::int64_t Counter() override { return now; }
    std::uint32_t TickCount() override { return 0; }
    std::optional<std::int64_t> LocalFileTimeToUtc(std::int64_t fileTime) override { return fileTime; }
    Date Now() override {
        return {kToday + 0.4 + setAheadDays +
                static_cast<double>(now) / static_cast<double>(kScale) / kMillisecondsPerDay};
    }

    std::int64_t now = 50'000'000;
    double setAheadDays = 0;  ///< by the user, who may set the time of day at any moment
};

/// A platform that has one timer and refuses some.
class TestTimers final : public platform::TimerService {
public:
    std::int32_t Start(std::uint32_t delayMs, platform::TimerHandler& called) override {
        handler = &called;
        delay = delayMs;
        ++calls;
        running = refuses ? 0 : ++last;
        return running;
    }
    void Stop(std::int32_t) override {
        ++calls;
        running = 0;
    }

    platform::TimerHandler* handler = nullptr;
    std::uint32_t delay = 0;
    std::int32_t running = 0;
    std::int32_t last = 0;
    int calls = 0;
    bool refuses = false;
};

/// What one side did, in one comparable value.
struct Trail {
    std::uint64_t hash = 1;
    void Add(std::int64_t value) { hash = (hash ^ static_cast<std::uint64_t>(value)) * 0x100000001B3; }
};

/// What a callback does is decided by what was dispatched alone, so that both sides decide alike.
class Script {
public:
    explicit Script(std::uint64_t seed) : mBits(seed) {}
    std::uint64_t Next(std::uint64_t below) {
        mBits ^= mBits << 13;
        mBits ^= mBits >> 7;
        mBits ^= mBits << 17;
        return (mBits >> 11) % below;
    }

private:
    std::uint64_t mBits;
};

/// One of the two sides, with a time and a platform of its own.
class Side {
public:
    virtual ~Side() = default;
    virtual void AddTick(int owner, std::int32_t interval) = 0;
    /// False when the date is refused.
    virtual bool AddAlarm(int owner, Date date, std::int32_t tag, std::int64_t relativeDue) = 0;
    virtual void Cancel(int owner, std::int32_t type, std::int32_t tag) = 0;
    virtual void TimerProc() = 0;
    virtual std::vector<std::int64_t> Contents() const = 0;

    /// The platform's timer fires, if one runs.
    void Fire() {
        if (timers.running != 0) TimerProc();
    }
    void Act(Script& script);
    /// Throws for a callee that fails.
    void Called(int owner, std::int32_t& type, std::int32_t& tag, Date& newDate);

    TestClock clock;
    TestTimers timers;
    Trail trail;
};

/// One operation; the limits of the rules are hit on the point and by the smallest step beside it.
inline void Side::Act(Script& script) {
    constexpr std::array<std::int64_t, 16> kWaits = {
        -70'000'000, -1,          0,           1,           5'000,       9'999,       10'000,      15'000,
        1'000'000,   299'994'999, 299'995'000, 299'999'999, 300'000'000, 300'000'001, 950'000'000, 25'000};
    constexpr std::array<double, 10> kSeconds = {-1, 0, 0.999, 1, 1.001, 30, 100'000, 0.5, -3'600, 10.25};
    constexpr std::array<double, 8> kDates = {0.25, 0.9, kToday + 59.999, kToday + 60, kToday + 61, 1e9, 0, -2e9};
    constexpr int kTags = 5;
    const int owner = static_cast<int>(script.Next(kOwners));
    const auto tag = static_cast<std::int32_t>(script.Next(kTags));
    switch (script.Next(16)) {
        case 0:
        case 1:
        case 2:
            AddTick(owner, static_cast<std::int32_t>(1 + script.Next(300)));
            break;
        case 3:
        case 4:
        case 5:
        case 6:
        case 7:
            AddAlarm(owner, {}, tag, clock.now + kWaits[script.Next(kWaits.size())]);
            break;
        case 8:
            trail.Add(AddAlarm(owner, {clock.Now().days + kSeconds[script.Next(kSeconds.size())] / 86'400}, tag, 0));
            break;
        case 9:
            trail.Add(AddAlarm(owner, {kDates[script.Next(kDates.size())]}, tag, 0));
            break;
        default:
            Cancel(owner, static_cast<std::int32_t>(script.Next(4)), tag);
            break;
    }
}

inline void Side::Called(int owner, std::int32_t& type, std::int32_t& tag, Date& newDate) {
    for (const std::int64_t value : {std::int64_t{owner}, std::int64_t{type}, std::int64_t{tag}, clock.now})
        trail.Add(value);
    Script script(trail.hash | 1);
    switch (script.Next(16)) {
        case 0:
        case 1:
        case 2:
        case 3:
            for (std::uint64_t count = script.Next(3); count > 0; --count)
                Act(script);
            break;
        case 4:
            Fire();
            Act(script);
            break;
        case 5:
            clock.now += static_cast<std::int64_t>(script.Next(3'000'000));
            break;
        case 6:
            tag = static_cast<std::int32_t>(script.Next(4));
            newDate.days = clock.Now().days;
            break;
        case 7:
            type = static_cast<std::int32_t>(script.Next(4));
            throw std::bad_alloc();
        case 8:
            newDate.days = std::nan("");
            break;
        case 9:
        case 10:
            platform::Raise(5, u"callee", u"planned");
        case 11:
        case 12:
            newDate.days = clock.Now().days + static_cast<double>(script.Next(4)) / 86'400;
            break;
        default:
            break;
    }
}

class RegistrySide final : public Side {
public:
    RegistrySide() {
        mComponent = std::make_unique<component::Component>(WithTime(mDesktop.Services(), clock, timers));
        for (int number = 0; number < kOwners; ++number)
            mOwners.push_back(std::make_unique<Owner>(*this, number));
        Timers().AdjustTimerCount(+1);
    }

    void AddTick(int owner, std::int32_t interval) override { Timers().AddTick(At(owner), interval); }
    bool AddAlarm(int owner, Date date, std::int32_t tag, std::int64_t relativeDue) override {
        try {
            Timers().AddAlarmEntry(At(owner), date, tag, {relativeDue});
            return true;
        } catch (const platform::ComponentError&) {
            return false;
        }
    }
    void Cancel(int owner, std::int32_t type, std::int32_t tag) override {
        Timers().CancelEntries(At(owner), type, tag);
    }
    void TimerProc() override { timers.handler->TimerProc(); }
    std::vector<std::int64_t> Contents() const override {
        std::vector<std::int64_t> contents = {mComponent->timers.Table().ActiveCount()};
        for (std::int32_t number = 1; number <= mComponent->timers.Table().SlotCount(); ++number) {
            const TimerRow& row = mComponent->timers.Table().Row(number);
            contents.push_back(row.type);
            if (row.type == kFree) continue;
            contents.insert(contents.end(), {static_cast<const Owner*>(row.timer.Get())->number, row.interval,
                                             row.itemData, row.due.scaled});
        }
        return contents;
    }
    int References() const {
        int references = 0;
        for (const auto& owner : mOwners)
            references += owner->references;
        return references;
    }

private:
    struct Owner final : TimerOwner {
        Owner(Side& theSide, int theNumber) : side(theSide), number(theNumber) {}
        void TimerTick(std::int32_t& type, std::int32_t& tag, Date& newDate) override {
            side.Called(number, type, tag, newDate);
        }
        void AddOwnerReference() noexcept override { ++references; }
        void ReleaseOwner() noexcept override { --references; }
        Side& side;
        int number;
        int references = 0;
    };

    MKWOTimer& Timers() { return mComponent->timers; }
    Owner& At(int owner) { return *mOwners[static_cast<std::size_t>(owner)]; }

    platform::simulated::SimulatedDesktop mDesktop;
    std::vector<std::unique_ptr<Owner>> mOwners;
    std::unique_ptr<component::Component> mComponent;
};

/// The rules one by one.
class LiteralSide final : public Side {
public:
    LiteralSide() : mRows(1 + 2) {}

    void AddTick(int owner, std::int32_t interval) override {
        Cancel(owner, kTick, 0);
        Row& row = mRows[FindFreeSlot()];
        row = {kTick, owner, interval, 0, clock.now + interval * kScale};
        Reschedule();
    }
    bool AddAlarm(int owner, Date date, std::int32_t tag, std::int64_t relativeDue) override {
        Cancel(owner, kAlarm, tag);
        std::int64_t due = relativeDue;
        if (relativeDue == 0) {
            if (!(date.days < 2'958'466.0 && date.days > -657'435.0)) return false;
            const double now = clock.Now().days;
            const double today = std::floor(now);
            const double seconds = std::floor(std::fabs(date.days) * 86'400 + 0.5);
            if (seconds < 86'400) date.days = today + date.days;
            if (date.days >= today + 60) date.days = today + 60;
            std::int64_t difference = FileTime(date.days) - FileTime(now);
            if (difference < 1'000 * kScale) difference = 1'000 * kScale;
            due = clock.now + difference;
        }
        Row& row = mRows[FindFreeSlot()];
        row = {kAlarm, owner, 0, tag, due};
        Reschedule();
        return true;
    }
    void Cancel(int owner, std::int32_t type, std::int32_t tag) override {
        for (Row& row : mRows) {
            if (row.type == kFree || row.owner != owner) continue;
            const bool freed = type == 0 || (type == kTick && row.type == kTick) ||
                               (type == kAlarm && row.type == kAlarm && (tag == 0 || tag == row.tag));
            if (!freed) continue;
            --mActiveCount;
            row.type = kFree;
        }
        if (mActiveCount <= 0 && mTimerId != 0) {
            timers.Stop(mTimerId);
            mTimerId = 0;
        }
    }
    void TimerProc() override {
        if (mInTimerProc) {
            if (mTimerId != 0) timers.Stop(mTimerId);
            mTimerId = 0;
            return;
        }
        mInTimerProc = true;
        std::int64_t now = clock.now;
        bool anyDue = false;
        for (std::size_t index = 1; index < mRows.size(); ++index) {
            if (mRows[index].type == kFree || mRows[index].due > now) continue;
            anyDue = true;
            const int owner = mRows[index].owner;
            std::int32_t type = mRows[index].type;
            std::int32_t tag = mRows[index].tag;
            if (type == kAlarm) {
                mRows[index].type = kFree;
                --mActiveCount;
            } else {
                do
                    mRows[index].due += mRows[index].interval * kScale;
                while (mRows[index].due <= now);
            }
            Date newDate{};
            bool failed = false;
            try {
                Called(owner, type, tag, newDate);
            } catch (...) {
                failed = true;
            }
            if (failed) {
                Cancel(owner, type, tag);
            } else if (newDate.days != 0) {
                AddAlarm(owner, newDate, tag, 0);
            }
            now = clock.now;
            index = 0;
        }
        mInTimerProc = false;
        if (!anyDue) mLastDue = 0;
        Reschedule();
    }
    std::vector<std::int64_t> Contents() const override {
        std::vector<std::int64_t> contents = {mActiveCount};
        for (std::size_t index = 1; index < mRows.size(); ++index) {
            const Row& row = mRows[index];
            contents.push_back(row.type);
            if (row.type != kFree) contents.insert(contents.end(), {row.owner, row.interval, row.tag, row.due});
        }
        return contents;
    }

private:
    struct Row {
        std::int32_t type = kFree;
        int owner = 0;
        std::int32_t interval = 0;
        std::int32_t tag = 0;
        std::int64_t due = 0;
    };

    static std::int64_t FileTime(double days) {
        return days == 0 ? 0 : std::llrint((days + 109'205) * kMillisecondsPerDay * static_cast<double>(kScale));
    }
    std::size_t FindFreeSlot() {
        ++mActiveCount;
        for (std::size_t index = 1; index < mRows.size(); ++index) {
            if (mRows[index].type == kFree) return index;
        }
        mRows.resize(mRows.size() + 2);
        return static_cast<std::size_t>(mActiveCount);
    }
    void Reschedule() {
        if (mInTimerProc) return;
        constexpr std::int64_t kNone = 0x7FFFFFFFFFFFE950;
        std::int64_t earliest = kNone;
        for (const Row& row : mRows) {
            if (row.type != kFree && row.due < earliest) earliest = row.due;
        }
        if (earliest == mLastDue && mTimerId != 0) return;
        mLastDue = earliest;
        std::int64_t delay = 0;
        if (earliest <= clock.now) {
            delay = 1;
        } else if (earliest - clock.now > 0x11E1A300) {
            if (mTimerId != 0) return;
            delay = 0x7530;
        } else {
            delay = std::llrint(static_cast<double>(earliest - clock.now) / static_cast<double>(kScale));
        }
        if (mTimerId != 0) timers.Stop(mTimerId);
        if (earliest == kNone) return;
        mTimerId = timers.Start(static_cast<std::uint32_t>(delay), mNobody);
    }

    struct Nobody final : platform::TimerHandler {
        void TimerProc() noexcept override {}
    };

    Nobody mNobody;
    std::vector<Row> mRows;  ///< from 1
    std::int32_t mActiveCount = 0;
    std::int32_t mTimerId = 0;
    std::int64_t mLastDue = 0;
    bool mInTimerProc = false;
};

/// Everything but the rows, which are compared less often.
inline std::array<std::uint64_t, 6> Summary(const Side& side) {
    return {side.trail.hash,
            static_cast<std::uint64_t>(side.clock.now),
            static_cast<std::uint64_t>(side.timers.calls),
            side.timers.delay,
            side.timers.running != 0,
            static_cast<std::uint64_t>(side.timers.last)};
}

inline void Step(Side& side, std::uint64_t seed) {
    constexpr std::array<std::int64_t, 8> kSteps = {1, 4'999, 10'000, 1'000'000, 1'000'001, 30'000'000, 300'000'000, 0};
    Script script(seed);
    switch (script.Next(8)) {
        case 0:
        case 1:
            side.clock.now += kSteps[script.Next(kSteps.size())];
            break;
        case 2:
        case 3:
            side.Fire();
            break;
        case 4:
            side.timers.refuses = script.Next(20) == 0;
            break;
        default:
            side.Act(script);
            break;
    }
}

}  // namespace kwo::timers
