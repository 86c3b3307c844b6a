#pragma once

#include <map>
#include <memory>
#include <vector>

#include "invoke_fuzz/random.h"
#include "lateness.h"
#include "live_objects.h"
#include "pulse.h"
#include "timer_client.h"

namespace kwo::soak {

using com_test::Var;
using invoke_fuzz::Random;

/// What all timers of the program share.
struct TimeKeeping {
    const Pulse& pulse;
    Lateness ticks;
    Lateness alarms;
    Lateness plainTicks;
    Lateness plainAlarms;
    long refused = 0;    ///< ticks that a failing handler has ended
    long cancelled = 0;  ///< alarms that must not come
};

/// Plain timers of the system's in this thread.
class PlainTimers {
public:
    explicit PlainTimers(TimeKeeping& keeping);
    PlainTimers(const PlainTimers&) = delete;
    PlainTimers& operator=(const PlainTimers&) = delete;
    ~PlainTimers();

    UINT_PTR Every(int periodMs);
    void Once(int delayMs);
    void Stop(UINT_PTR timer);
    /// Stops those that belong to alarms that were cancelled.
    void StopAll();

private:
    struct Timer {
        Rhythm rhythm;
        double due = 0;
        bool repeats = false;
    };
    static void CALLBACK Fired(HWND, UINT, UINT_PTR id, DWORD);

    inline static PlainTimers* sRunning = nullptr;
    TimeKeeping& mKeeping;
    std::map<UINT_PTR, Timer> mTimers;
};

/// One timer of the component with everybody who listens to it, and what is expected of it.
class WatchedTimer {
public:
    WatchedTimer(TimeKeeping& keeping, PlainTimers& plain, Random& random);
    WatchedTimer(const WatchedTimer&) = delete;
    WatchedTimer& operator=(const WatchedTimer&) = delete;
    ~WatchedTimer();

    void StartTick(int periodMs);
    void StopTick();
    bool Ticks() const { return mRhythm.Runs(); }
    /// Adds an alarm, relative or dated, at most `furthestMs` ahead; it may replace another one.
    void AddAlarm(int furthestMs);
    std::size_t PendingAlarms() const { return mAlarms.size(); }
    /// Any change that a program makes to its timers; alarms are at most `furthestMs` ahead.
    void Tinker(int furthestMs);
    /// Finds what should have come and has not.
    void Look();
    /// Does something to the timer that nobody expects: lost-tick, lost-alarm, double-tick, double-alarm.
    void Plant(const std::string& fault);
    /// Gives the timer back while alarms are pending: they still come, and then the timer ends.
    void Abandon();
    bool IsAbandoned() const { return mIsAbandoned; }
    bool HasEnded() const { return mIsAbandoned && mItem.references == 0; }
    /// Cancels everything and gives the timer back.
    void End();

private:
    struct Alarm {
        double earliest;
        double latest;
    };
    enum class Listener { Sink, Early, Late };

    void Connect();
    void UseListener(Listener listener);
    void Cancel(LONG type, LONG tag);
    HRESULT OnTick(Listener heardBy);
    HRESULT OnAlarm(Listener heardBy, LONG tag, DATE* newDate);
    void Expect(LONG tag, double earliest, double latest);
    void CallOk(const com_test::Outcome& outcome, const char* what);

    TimeKeeping& mKeeping;
    PlainTimers& mPlain;
    Random& mRandom;
    com_test::Sink mSink;
    com_test::Sink mLateTick;
    com_test::Sink mLateAlarm;
    com_test::EarlyTick mEarlyTick;
    com_test::EarlyAlarm mEarlyAlarm;
    com_test::Probe mItem;  ///< held by the timer until it ends
    LiveObject mTimer;
    ComPtr<IConnectionPoint> mPoint;
    DWORD mCookie = 0;
    Listener mListener = Listener::Sink;
    Rhythm mRhythm;
    UINT_PTR mPlainTick = 0;
    std::map<LONG, Alarm> mAlarms;
    LONG mLastTag = 0;
    bool mIsAbandoned = false;
    bool mIsFailing = false;
};

/// Timers that tick all the time, with alarms up to minutes ahead, and timers that change all the time.
class TimerWork {
public:
    TimerWork(TimeKeeping& keeping, std::uint64_t seed);
    TimerWork(const TimerWork&) = delete;
    TimerWork& operator=(const TimerWork&) = delete;

    /// Starts the timers that stay until EndStanding; their alarms are at most `furthestMs` ahead.
    void BeginStanding(int furthestMs);
    void EndStanding();
    void BeginRound();
    /// To be called again and again during a round.
    void Turn();
    /// A fault of the program's own in one timer.
    void Plant(const std::string& fault);
    /// Ends the timers of the round. Timers that were abandoned are waited for by `process`.
    void EndRound(const std::function<void(int ms)>& process);

private:
    TimeKeeping& mKeeping;
    Random mRandom;
    PlainTimers mPlain;
    std::vector<std::unique_ptr<WatchedTimer>> mStanding;
    std::vector<std::unique_ptr<WatchedTimer>> mOfRound;
    int mFurthestMs = 0;
};

}  // namespace kwo::soak
