#include <algorithm>
#include <atomic>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <vector>

#include "support/clock.h"
#include "thread.h"
#include "timer_client.h"

namespace kwo::com_test {
namespace {

using test_support::NowMs;

/// Timers of the system's own, and how late the worst of them came. They have a thread of their own: on that of the
/// component, what holds its ticks up would hold these up as well.
class PlainTimers {
public:
    PlainTimers() : mThread([this] { Run(); }) { WaitForSingleObject(mIsRunning, INFINITE); }
    ~PlainTimers() {
        PostThreadMessageW(mThreadId, WM_QUIT, 0, 0);
        mThread.Join();
        CloseHandle(mIsRunning);
    }
    void Once(int delayMs) { Ask(delayMs, false); }
    void Every(int periodMs) { Ask(periodMs, true); }
    double WorstMs() const { return mWorstMs; }

private:
    static constexpr UINT kStart = WM_APP;
    struct Timer {
        double due;
        int delayMs;
        bool repeats;
    };
    void Ask(int delayMs, bool repeats) const {
        EXPECT_TRUE(PostThreadMessageW(mThreadId, kStart, static_cast<WPARAM>(delayMs), repeats));
    }
    void Run() {
        sRunning = this;
        MSG message;
        PeekMessageW(&message, nullptr, 0, 0, PM_NOREMOVE);  // from now on the thread has a queue
        mThreadId = GetCurrentThreadId();
        SetEvent(mIsRunning);
        while (GetMessageW(&message, nullptr, 0, 0) > 0) {
            if (message.message == kStart) Start(static_cast<int>(message.wParam), message.lParam != 0);
            DispatchMessageW(&message);
        }
        for (const auto& [id, timer] : mTimers)
            KillTimer(nullptr, id);
    }
    void Start(int delayMs, bool repeats) {
        const UINT_PTR id = SetTimer(nullptr, 0, static_cast<UINT>(delayMs), Fired);
        ASSERT_NE(id, 0u);
        mTimers[id] = {NowMs() + delayMs, delayMs, repeats};
    }
    static void CALLBACK Fired(HWND, UINT, UINT_PTR id, DWORD) {
        const auto found = sRunning->mTimers.find(id);
        if (found == sRunning->mTimers.end()) return;
        Timer& timer = found->second;
        const double now = NowMs();
        sRunning->mWorstMs = std::max(sRunning->mWorstMs.load(), now - timer.due);
        timer.due = now + timer.delayMs;
        if (timer.repeats) return;
        KillTimer(nullptr, id);
        sRunning->mTimers.erase(found);
    }

    inline static PlainTimers* sRunning = nullptr;
    const HANDLE mIsRunning = CreateEventW(nullptr, TRUE, FALSE, nullptr);
    DWORD mThreadId = 0;
    std::map<UINT_PTR, Timer> mTimers;
    std::atomic<double> mWorstMs = 0;
    Thread mThread;
};

/// The component's ticks and alarms beside timers of the system's own.
///
/// KWO_PUNCTUALITY=long runs it for 45 seconds: `KWO_PUNCTUALITY=long tools/wine64.sh
/// build/x64/tests/com/com_tests.exe --gtest_filter='TimerPunctuality*'`.
class TimerPunctuality : public TimerClient {
protected:
    static constexpr int kPeriodMs = 50;
    static constexpr double kSystemTickMs = 15.625;
    static constexpr double kHiccupMs = 2'000;
    static constexpr double kReadingMs = 0.001;  ///< what one reading of the clock may differ from another's rounding

    struct Form {
        int ticks;
        int alarms;
        int furthestMs;
    };
    static Form WantedForm() {
        const char* const form = std::getenv("KWO_PUNCTUALITY");
        return form != nullptr && std::string(form) == "long" ? Form{600, 100, 45'000} : Form{60, 12, 3'000};
    }
};

TEST_F(TimerPunctuality, NothingComesEarlyOrLaterThanTheSystemsOwnTimersAndOneOfItsTicks) {
    constexpr int kNearestMs = 500;
    const Form form = WantedForm();
    PlainTimers plain;
    Sink& sink = NewSink();
    struct Alarm {
        double earliest = 0;
        double latest = 0;
        int came = 0;
    };
    std::map<LONG, Alarm> alarms;
    double begin = 0;
    double nextTick = 0;
    int ticks = 0;
    std::vector<double> lateness;
    double soonest = 1e9;
    sink.onInvoke = [&](DISPID event, DISPPARAMS& arguments, EXCEPINFO&) {
        const double now = NowMs();
        if (event == kTickEvent) {
            if (++ticks <= form.ticks) {
                lateness.push_back(now - nextTick);
                soonest = std::min(soonest, now - nextTick);
            }
            nextTick = begin + (std::floor((now - begin) / kPeriodMs) + 1) * kPeriodMs;
            return S_OK;
        }
        Alarm& alarm = alarms[*arguments.rgvarg[1].plVal];
        ++alarm.came;
        lateness.push_back(now - alarm.latest);
        soonest = std::min(soonest, now - alarm.earliest);
        return S_OK;
    };
    Connect(sink);
    for (int number = 0; number < form.alarms; ++number) {
        const int delayMs = kNearestMs + number * (form.furthestMs - kNearestMs) / (form.alarms - 1);
        Alarm& alarm = alarms[number + 1];
        alarm.earliest = NowMs() + delayMs;
        AddRelative(delayMs, number + 1);
        alarm.latest = NowMs() + delayMs;
        plain.Once(delayMs);
    }
    Let(mTimer.Get(), L"Interval", kPeriodMs);
    begin = NowMs();
    nextTick = begin + kPeriodMs;
    Let(mTimer.Get(), L"Enabled", true);
    plain.Every(kPeriodMs);

    const double end = NowMs() + form.furthestMs + 1'000;
    while (NowMs() < end) {
        MsgWaitForMultipleObjects(0, nullptr, FALSE, 10, QS_ALLINPUT);
        Process();
    }

    for (const auto& [tag, alarm] : alarms)
        EXPECT_EQ(alarm.came, 1) << tag;
    EXPECT_GE(ticks, form.ticks / 2);
    ASSERT_FALSE(lateness.empty());
    std::sort(lateness.begin(), lateness.end());
    const double ordinary = lateness[lateness.size() * 9 / 10];
    std::printf(
        "soonest %.3f ms, nine in ten at most %.3f ms and all at most %.3f ms after their time; the system's own "
        "worst %.3f ms\n",
        soonest, ordinary, lateness.back(), plain.WorstMs());
    EXPECT_GE(soonest, -kReadingMs);
    // A busy machine delays one or another.
    EXPECT_LE(ordinary, plain.WorstMs() + kSystemTickMs);
    EXPECT_LE(lateness.back(), plain.WorstMs() + kHiccupMs);
}

}  // namespace
}  // namespace kwo::com_test
