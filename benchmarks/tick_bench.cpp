#include <windows.h>
#include <oleauto.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <string_view>
#include <vector>

#include "kwoutil.h"
#include "measure.h"
#include "support/stand_in.h"

// A tick of 50 milliseconds for 20 seconds beside a plain timer of the system, in one process at the same time.
// KWOUtil must be registered.

namespace {

using namespace kwo::bench;

constexpr LONG kIntervalMs = 50;
constexpr DWORD kDurationMs = 20'000;

double NowMs() {
    LARGE_INTEGER frequency;
    LARGE_INTEGER count;
    ::QueryPerformanceFrequency(&frequency);
    ::QueryPerformanceCounter(&count);
    return 1e3 * static_cast<double>(count.QuadPart) / static_cast<double>(frequency.QuadPart);
}

/// When the ticks of one timer came, and what that says.
class Series {
public:
    void Begin() { mBegin = NowMs(); }
    void Note() { mTimes.push_back(NowMs() - mBegin); }

    void Print(const char* name) const {
        std::vector<double> gaps;
        std::vector<double> late;
        double before = 0;
        for (const double time : mTimes) {
            gaps.push_back(time - before);
            before = time;
            // Behind the latest point of the grid that it can have been for.
            late.push_back(std::fmod(time, kIntervalMs));
        }
        std::printf("  %-28s %6zu %10.2f %10.2f %10.2f %12.2f %10.2f\n", name, mTimes.size(), Mean(gaps),
                    Quantile(gaps, 0.95), Quantile(gaps, 1), Mean(late), Quantile(late, 0.95));
    }

private:
    static double Mean(const std::vector<double>& values) {
        double sum = 0;
        for (const double value : values)
            sum += value;
        return values.empty() ? 0 : sum / static_cast<double>(values.size());
    }
    static double Quantile(std::vector<double> values, double part) {
        if (values.empty()) return 0;
        std::sort(values.begin(), values.end());
        return values[static_cast<std::size_t>(part * static_cast<double>(values.size() - 1))];
    }

    double mBegin = 0;
    std::vector<double> mTimes;
};

Series ofTheSystem;

void CALLBACK SystemTimer(HWND, UINT, UINT_PTR, DWORD) {
    ofTheSystem.Note();
}

/// An early-bound callback object.
class Callback final : public kwo::test_support::StandIn<_IKWOTimer> {
public:
    Callback() { interfaceId = IID__IKWOTimer; }
    STDMETHODIMP Tick(_KWOTimer**) override {
        series.Note();
        return S_OK;
    }

    Series series;
};

void ProcessMessagesFor(DWORD durationMs) {
    const DWORD begin = ::GetTickCount();
    while (::GetTickCount() - begin < durationMs) {
        ::MsgWaitForMultipleObjects(0, nullptr, FALSE, 20, QS_ALLINPUT);
        MSG message;
        while (::PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE))
            ::DispatchMessageW(&message);
    }
}

}  // namespace

int main(int argc, char** argv) {
    // A filter for another benchmark.
    for (int at = 1; at < argc; ++at) {
        if (std::string_view(argv[at]).find("tick") == std::string_view::npos) return 0;
    }
    Must(::CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED), "CoInitializeEx");
    auto timer = Early<_KWOTimer>(Created(L"KWOUtil.KWOTimer"), IID__KWOTimer);
    Callback callback;
    VARIANT_BOOL enabled = VARIANT_TRUE;
    timer->putref_TimerEvents(&callback);

    ofTheSystem.Begin();
    const UINT_PTR systemTimer = ::SetTimer(nullptr, 0, kIntervalMs, SystemTimer);
    callback.series.Begin();
    timer->put_Interval(kIntervalMs);
    timer->put_Enabled(&enabled);
    ProcessMessagesFor(kDurationMs);
    ::KillTimer(nullptr, systemTimer);
    timer->CancelTimers(nullptr, nullptr);

    std::printf("\n%ld ms for %lu s          %14s %10s %10s %10s %12s %10s\n", kIntervalMs, kDurationMs / 1'000,
                "ticks", "mean gap", "95 % gap", "max gap", "mean late", "95 % late");
    callback.series.Print("KWOTimer");
    ofTheSystem.Print("SetTimer");
    std::printf("  (milliseconds; late is behind the grid of whole intervals since the start)\n");
    timer.Reset();
    ::CoUninitialize();
    return 0;
}
