#include "timer_work.h"

#include <dispex.h>

#include <algorithm>
#include <cmath>
#include <cstdio>

#include "com_support/type_description.h"
#include "dll_under_test.h"
#include "findings.h"

namespace kwo::soak {
namespace {

using com_test::Call;
using com_test::Hex;
using com_test::Let;
using com_test::Outcome;
using com_test::Set;

/// The component's timer has expired this much after the due time at the latest.
constexpr double kExpiryMs = 20;
/// A tick or alarm is late if a timer of the system's had more turns than this meanwhile, whatever the thread did.
constexpr int kMostBeats = 4;
constexpr LONG kTickType = 1;
constexpr LONG kAlarmType = 2;
constexpr LONG kEverything = 0;

/// The identifiers of the interfaces that clients implement.
struct Interfaces {
    IID events = {};
    IID tick = {};
    IID alarm = {};
};

const Interfaces& KnownInterfaces() {
    static const Interfaces known = [] {
        Interfaces found;
        ComPtr<ITypeLib> library;
        if (FAILED(LoadTypeLibEx(com_test::DllPath().c_str(), REGKIND_NONE, library.Out()))) return found;
        const auto idOf = [&](const wchar_t* name) {
            ComPtr<ITypeInfo> info;
            MEMBERID member = 0;
            USHORT count = 1;
            library->FindName(const_cast<LPOLESTR>(name), 0, info.Out(), &member, &count);
            if (count != 1) return IID_NULL;
            const com_support::TypeAttributes attributes(*info);
            return attributes ? attributes->guid : IID_NULL;
        };
        found = {idOf(L"__KWOTimer"), idOf(L"_IKWOTimer"), idOf(L"_IKWOAlarm")};
        return found;
    }();
    return known;
}

/// The local date and time, as the component reads it.
double WallNow() {
    constexpr double kMillisecondsPerDay = 86'400'000;
    SYSTEMTIME now;
    GetLocalTime(&now);
    const double milliseconds = now.wMilliseconds;
    now.wMilliseconds = 0;
    double days = 0;
    SystemTimeToVariantTime(&now, &days);
    return days + milliseconds / kMillisecondsPerDay;
}

double MillisecondsOf(double days) {
    return days * 86'400'000;
}

std::string Ms(double ms) {
    char text[40];
    std::snprintf(text, sizeof text, "%.3f ms", ms);
    return text;
}

}  // namespace

PlainTimers::PlainTimers(TimeKeeping& keeping) : mKeeping(keeping) {
    sRunning = this;
}

PlainTimers::~PlainTimers() {
    StopAll();
    sRunning = nullptr;
}

void PlainTimers::StopAll() {
    for (const auto& [id, timer] : mTimers)
        KillTimer(nullptr, id);
    mTimers.clear();
}

UINT_PTR PlainTimers::Every(int periodMs) {
    const double begin = NowMs();
    const UINT_PTR id = SetTimer(nullptr, 0, static_cast<UINT>(periodMs), Fired);
    if (id == 0) return 0;
    Timer& timer = mTimers[id];
    timer.rhythm.Begin(begin, NowMs(), periodMs);
    timer.repeats = true;
    return id;
}

void PlainTimers::Once(int delayMs) {
    const double begin = NowMs();
    const UINT_PTR id = SetTimer(nullptr, 0, static_cast<UINT>(delayMs), Fired);
    if (id != 0) mTimers[id].due = begin + delayMs;
}

void PlainTimers::Stop(UINT_PTR timer) {
    if (mTimers.erase(timer) != 0) KillTimer(nullptr, timer);
}

void CALLBACK PlainTimers::Fired(HWND, UINT, UINT_PTR id, DWORD) {
    if (sRunning == nullptr) return;
    const double now = NowMs();
    const auto found = sRunning->mTimers.find(id);
    if (found == sRunning->mTimers.end()) return;
    if (found->second.repeats) {
        sRunning->mKeeping.plainTicks.Add(found->second.rhythm.Came(now, true));
        return;
    }
    sRunning->mKeeping.plainAlarms.Add(now - found->second.due);
    sRunning->Stop(id);
}

WatchedTimer::WatchedTimer(TimeKeeping& keeping, PlainTimers& plain, Random& random)
    : mKeeping(keeping), mPlain(plain), mRandom(random), mTimer(L"KWOTimer") {
    mEarlyTick.interfaceId = KnownInterfaces().tick;
    mEarlyAlarm.interfaceId = KnownInterfaces().alarm;
    // An object of a script engine is known by this; none of its own members is called here.
    mLateTick.interfaceId = mLateAlarm.interfaceId = __uuidof(IDispatchEx);
    mLateTick.member = L"Tick";
    mLateAlarm.member = L"Alarm";
    mSink.onInvoke = [this](DISPID event, DISPPARAMS& given, EXCEPINFO&) {
        if (event == kTickType) return OnTick(Listener::Sink);
        return OnAlarm(Listener::Sink, *given.rgvarg[1].plVal, given.rgvarg[0].pdate);
    };
    mLateTick.onInvoke = [this](DISPID, DISPPARAMS&, EXCEPINFO&) { return OnTick(Listener::Late); };
    mLateAlarm.onInvoke = [this](DISPID, DISPPARAMS& given, EXCEPINFO&) {
        Var tag;
        VariantCopyInd(&tag, &given.rgvarg[1]);
        VARIANT& date = given.rgvarg[0];
        DATE* target = nullptr;
        if (date.vt == (VT_BYREF | VT_DATE)) target = date.pdate;
        if (date.vt == (VT_BYREF | VT_VARIANT) && date.pvarVal->vt == VT_DATE) target = &date.pvarVal->date;
        return OnAlarm(Listener::Late, tag.lVal, target);
    };
    mEarlyTick.onTick = [this](IDispatch**) { return OnTick(Listener::Early); };
    mEarlyAlarm.onAlarm = [this](IDispatch**, LONG* tag, DATE* date) { return OnAlarm(Listener::Early, *tag, date); };
    if (!mTimer) return;
    const auto container = com_test::As<IConnectionPointContainer>(mTimer.Get(), IID_IConnectionPointContainer);
    if (container) container->FindConnectionPoint(KnownInterfaces().events, mPoint.Out());
    if (!mPoint) Found("a timer has no events");
    CallOk(Set(mTimer.Get(), L"Item", static_cast<IDispatch*>(&mItem)), "Item");
    Connect();
}

WatchedTimer::~WatchedTimer() {
    End();
    // The timer has ended: nobody may hold what it was given.
    const ULONG held = mSink.references + mLateTick.references + mLateAlarm.references + mEarlyTick.references +
                       mEarlyAlarm.references + mItem.references;
    if (held != 0) Found("an ended timer still holds " + std::to_string(held) + " objects of its program");
}

void WatchedTimer::CallOk(const Outcome& outcome, const char* what) {
    if (outcome.status != S_OK)
        Found(std::string(what) + " failed: " + Hex(outcome.status) + ", scode " + Hex(outcome.scode));
}

void WatchedTimer::Connect() {
    if (mCookie != 0) mPoint->Unadvise(std::exchange(mCookie, 0));
    const HRESULT connected = mPoint->Advise(&mSink, &mCookie);
    if (FAILED(connected)) Found("a sink cannot be connected: " + Hex(connected));
}

/// The sink stays connected, and must hear nothing while there are callback objects.
void WatchedTimer::UseListener(Listener listener) {
    using Object = IDispatch*;
    mListener = listener;
    const Object tick = listener == Listener::Early  ? Object{&mEarlyTick}
                        : listener == Listener::Late ? &mLateTick
                                                     : nullptr;
    const Object alarm = listener == Listener::Early  ? Object{&mEarlyAlarm}
                         : listener == Listener::Late ? &mLateAlarm
                                                      : nullptr;
    CallOk(Set(mTimer.Get(), L"TimerEvents", tick), "TimerEvents");
    CallOk(Set(mTimer.Get(), L"AlarmEvents", alarm), "AlarmEvents");
}

void WatchedTimer::StartTick(int periodMs) {
    StopTick();
    mIsFailing = false;
    const bool enabledFirst = mRandom.Flag();
    if (enabledFirst) {
        CallOk(Let(mTimer.Get(), L"Interval", 0), "Interval");
        CallOk(Let(mTimer.Get(), L"Interval", 100'000), "Interval");
        CallOk(Let(mTimer.Get(), L"Enabled", true), "Enabled");
    } else {
        CallOk(Let(mTimer.Get(), L"Enabled", true), "Enabled");
    }
    const double earliest = NowMs();
    CallOk(Let(mTimer.Get(), L"Interval", periodMs), "Interval");
    mRhythm.Begin(earliest, NowMs(), periodMs);
    mPlainTick = mPlain.Every(periodMs);
}

void WatchedTimer::StopTick() {
    if (mPlainTick != 0) mPlain.Stop(std::exchange(mPlainTick, 0));
    if (!mRhythm.Runs()) return;
    Look();
    mRhythm.Stop();
    if (mRandom.Flag()) {
        CallOk(Let(mTimer.Get(), L"Enabled", false), "Enabled");
    } else {
        Cancel(kTickType, 0);
    }
}

void WatchedTimer::Cancel(LONG type, LONG tag) {
    CallOk(Call(mTimer.Get(), L"CancelTimers", {type, tag}), "CancelTimers");
}

void WatchedTimer::Expect(LONG tag, double earliest, double latest) {
    // An alarm replaces the one with its tag; with the tag 0 it replaces all.
    if (tag == 0) {
        mKeeping.cancelled += static_cast<long>(mAlarms.size());
        mAlarms.clear();
    } else if (mAlarms.erase(tag) != 0) {
        ++mKeeping.cancelled;
    }
    mAlarms[tag] = {earliest, latest};
}

void WatchedTimer::AddAlarm(int furthestMs) {
    constexpr double kSoonestMs = 1'000;
    Look();
    const bool replaces = !mAlarms.empty() && mRandom.Once(6);
    const LONG tag = replaces ? mAlarms.begin()->first : mRandom.Once(40) ? 0 : ++mLastTag;
    const int delayMs = mRandom.Below(furthestMs);
    const double before = NowMs();
    if (mRandom.Flag()) {
        CallOk(Call(mTimer.Get(), L"AddRelativeAlarm", {delayMs, tag}), "AddRelativeAlarm");
        Expect(tag, before + delayMs, NowMs() + delayMs);
        mPlain.Once(delayMs);
        return;
    }
    const double wallBefore = WallNow();
    const double date = wallBefore + delayMs / 86'400'000.0;
    CallOk(Call(mTimer.Get(), L"AddAlarm", {Var::Date(date), tag}), "AddAlarm");
    const double after = NowMs();
    const double wallAfter = WallNow();
    // A date is kept in a number that cannot tell a thousandth of a millisecond.
    constexpr double kDateMs = 0.1;
    const double longest = std::max(MillisecondsOf(date - wallBefore), kSoonestMs);
    Expect(tag, before + std::max(MillisecondsOf(date - wallAfter), kSoonestMs) - kDateMs, after + longest + kDateMs);
    mPlain.Once(static_cast<int>(longest));
}

void WatchedTimer::Tinker(int furthestMs) {
    constexpr int kPeriodsMs[] = {20, 25, 33, 50, 75, 100, 140, 200, 333, 500, 777, 1'000, 2'500};
    if (mIsAbandoned || !mTimer) return;
    switch (mRandom.Below(10)) {
        case 0:
        case 1:
            StartTick(mRandom.Of(kPeriodsMs));
            break;
        case 2:
            StopTick();
            break;
        case 3:
            if (!mAlarms.empty()) {
                Look();
                const LONG tag = mAlarms.begin()->first;
                Cancel(kAlarmType, tag);
                if (tag == 0) {
                    mKeeping.cancelled += static_cast<long>(mAlarms.size());
                    mAlarms.clear();
                } else {
                    ++mKeeping.cancelled;
                    mAlarms.erase(tag);
                }
            }
            break;
        case 4: {
            constexpr Listener kListeners[] = {Listener::Sink, Listener::Early, Listener::Late};
            UseListener(mRandom.Of(kListeners));
            break;
        }
        case 5:
            Connect();
            break;
        case 6:
            mIsFailing = mRandom.Once(3);
            break;
        case 7: {
            const Outcome refused = Call(mTimer.Get(), L"AddAlarm", {Var::Date(1e300), 1'000'000});
            if (refused.status != DISP_E_EXCEPTION) Found("an invalid date is accepted: " + Hex(refused.status));
            break;
        }
        default:
            AddAlarm(furthestMs);
            break;
    }
}

HRESULT WatchedTimer::OnTick(Listener heardBy) {
    const double now = NowMs();
    if (!mRhythm.Runs()) {
        Found("a tick came that was cancelled");
        return S_OK;
    }
    if (heardBy != mListener) Found("a tick came to the wrong listener");
    const double due = mRhythm.Due();
    const double late = mRhythm.Came(now, mKeeping.pulse.BeatsBetween(mRhythm.Last(), now) > 0);
    if (late < 0) Found("a tick of " + std::to_string(mRhythm.PeriodMs()) + " ms came early or twice: " + Ms(-late));
    mKeeping.ticks.Add(late);
    const int beats = mKeeping.pulse.BeatsBetween(due + kExpiryMs, now);
    if (beats > kMostBeats)
        Found("a tick of " + std::to_string(mRhythm.PeriodMs()) + " ms came " + Ms(late) + " late; a plain timer had " +
              std::to_string(beats) + " turns meanwhile");
    if (!mIsFailing) return S_OK;
    // The failure ends the tick.
    mIsFailing = false;
    ++mKeeping.refused;
    mRhythm.Stop();
    return E_FAIL;
}

HRESULT WatchedTimer::OnAlarm(Listener heardBy, LONG tag, DATE* newDate) {
    const double now = NowMs();
    const auto found = mAlarms.find(tag);
    if (found == mAlarms.end()) {
        Found("an alarm came twice, or although it was cancelled");
        return S_OK;
    }
    if (heardBy != mListener) Found("an alarm came to the wrong listener");
    const Alarm alarm = found->second;
    mAlarms.erase(found);
    constexpr double kReadingMs = 0.001;
    if (now < alarm.earliest - kReadingMs) Found("an alarm came early: " + Ms(alarm.earliest - now));
    mKeeping.alarms.Add(now - alarm.latest);
    const int beats = mKeeping.pulse.BeatsBetween(alarm.latest + kExpiryMs, now);
    if (beats > kMostBeats)
        Found("an alarm came " + Ms(now - alarm.latest) + " late; a plain timer had " + std::to_string(beats) +
              " turns meanwhile");
    if (newDate != nullptr && !mIsAbandoned && mRandom.Once(8)) {
        // The component reads both clocks after this, so only the difference of their rounding counts.
        constexpr double kRoundingMs = 1.5;
        const int delayMs = 1'100 + mRandom.Below(2'000);
        *newDate = WallNow() + delayMs / 86'400'000.0;
        const double again = NowMs() + delayMs;
        Expect(tag, again - kRoundingMs, again + kRoundingMs);
        mPlain.Once(delayMs);
    }
    return S_OK;
}

void WatchedTimer::Look() {
    const double now = NowMs();
    const auto isLost = [&](double due) { return mKeeping.pulse.BeatsBetween(due + kExpiryMs, now) > kMostBeats; };
    if (mRhythm.Runs() && isLost(mRhythm.Due())) {
        Found("a tick of " + std::to_string(mRhythm.PeriodMs()) + " ms has not come for " + Ms(now - mRhythm.Due()));
        mRhythm.Stop();
    }
    for (auto at = mAlarms.begin(); at != mAlarms.end();) {
        if (isLost(at->second.latest)) {
            Found("an alarm has not come for " + Ms(now - at->second.latest));
            at = mAlarms.erase(at);
        } else {
            ++at;
        }
    }
}

void WatchedTimer::Plant(const std::string& fault) {
    if (fault == "lost-tick") Cancel(kTickType, 0);
    if (fault == "lost-alarm") Cancel(kAlarmType, 0);
    if (fault == "double-tick") Call(mTimer.Get(), L"TimerTick", {kTickType, LONG{0}});
    if (fault == "double-alarm") Call(mTimer.Get(), L"AddRelativeAlarm", {LONG{0}, LONG{77'777}});
}

void WatchedTimer::Abandon() {
    StopTick();
    if (mAlarms.empty()) return;
    mIsAbandoned = true;
    mPoint.Reset();
    if (mTimer.End()) Found("a timer ended although alarms are pending");
}

void WatchedTimer::End() {
    if (!mTimer) {
        if (mIsAbandoned && mItem.references == 0) {
            LiveObject::NoteEnd();
            mIsAbandoned = false;
        }
        return;
    }
    Look();
    StopTick();
    Cancel(kEverything, 0);
    mKeeping.cancelled += static_cast<long>(mAlarms.size());
    mAlarms.clear();
    if (mCookie != 0 && mRandom.Flag()) mPoint->Unadvise(std::exchange(mCookie, 0));
    mPoint.Reset();
    if (!mTimer.End()) Found("a timer has not ended with its last reference");
}

TimerWork::TimerWork(TimeKeeping& keeping, std::uint64_t seed) : mKeeping(keeping), mRandom(seed), mPlain(keeping) {}

void TimerWork::BeginStanding(int furthestMs) {
    constexpr int kPeriodsMs[] = {20, 30, 50, 100, 130, 250, 333, 500, 1'000, 2'500, 7'000, 15'000};
    mFurthestMs = furthestMs;
    for (const int period : kPeriodsMs) {
        auto& timer = mStanding.emplace_back(std::make_unique<WatchedTimer>(mKeeping, mPlain, mRandom));
        timer->StartTick(period);
    }
    Turn();
}

void TimerWork::EndStanding() {
    mStanding.clear();
    mPlain.StopAll();
}

void TimerWork::BeginRound() {
    constexpr int kTimers = 6;
    constexpr int kPeriodMs = 50;
    for (int at = 0; at < kTimers; ++at) {
        auto& timer = mOfRound.emplace_back(std::make_unique<WatchedTimer>(mKeeping, mPlain, mRandom));
        timer->StartTick(kPeriodMs * (at + 1));
    }
}

void TimerWork::Turn() {
    constexpr std::size_t kAlarms = 3;
    constexpr int kNearMs = 4'000;
    for (const auto& timer : mStanding) {
        timer->Look();
        // As many at each census.
        while (timer->PendingAlarms() < kAlarms)
            timer->AddAlarm(mFurthestMs);
    }
    for (const auto& timer : mOfRound)
        timer->Look();
    if (mOfRound.empty()) return;
    mRandom.Of(mOfRound)->Tinker(kNearMs);
    if (mRandom.Once(20)) mOfRound.emplace_back(std::make_unique<WatchedTimer>(mKeeping, mPlain, mRandom));
}

void TimerWork::Plant(const std::string& fault) {
    if (!mStanding.empty()) mStanding.front()->Plant(fault);
}

void TimerWork::EndRound(const std::function<void(int ms)>& process) {
    constexpr int kLongestMs = 8'000;
    constexpr int kStepMs = 20;
    for (const auto& timer : mOfRound)
        if (mRandom.Once(3)) timer->Abandon();
    std::erase_if(mOfRound, [](const auto& timer) { return !timer->IsAbandoned(); });
    const double begin = NowMs();
    while (!mOfRound.empty() && NowMs() - begin < kLongestMs) {
        process(kStepMs);
        for (const auto& timer : mOfRound)
            timer->Look();
        std::erase_if(mOfRound, [](const auto& timer) { return timer->HasEnded(); });
    }
    if (!mOfRound.empty()) {
        Found("a timer has not ended with its last alarm");
        // Something of it may still call its listeners: they stay.
        for (auto& timer : mOfRound)
            static_cast<void>(timer.release());
        mOfRound.clear();
    }
}

}  // namespace kwo::soak
