#include "lateness.h"

#include <algorithm>
#include <cmath>

namespace kwo::soak {

double NowMs() {
    LARGE_INTEGER count;
    LARGE_INTEGER frequency;
    QueryPerformanceCounter(&count);
    QueryPerformanceFrequency(&frequency);
    return static_cast<double>(count.QuadPart) * 1'000 / static_cast<double>(frequency.QuadPart);
}

void Lateness::Add(double ms) {
    ms = std::max(ms, 0.0);
    ++mSteps[std::min(kSteps, static_cast<std::size_t>(ms / kStepMs))];
    ++mCount;
    mWorst = std::max(mWorst, ms);
}

double Lateness::Quantile(double part) const {
    const double wanted = part * static_cast<double>(mCount);
    double seen = 0;
    for (std::size_t step = 0; step < mSteps.size(); ++step) {
        seen += mSteps[step];
        if (seen >= wanted && seen > 0) return std::min(mWorst, static_cast<double>(step + 1) * kStepMs);
    }
    return mWorst;
}

namespace {

constexpr UINT kBeatMs = 10;
constexpr std::size_t kBeatsKept = 16'384;

}  // namespace

Pulse::Pulse() : mBeats(kBeatsKept), mLast(NowMs()) {
    sBeating = this;
    mTimer = SetTimer(nullptr, 0, kBeatMs, Beat);
}

Pulse::~Pulse() {
    KillTimer(nullptr, mTimer);
    sBeating = nullptr;
}

void CALLBACK Pulse::Beat(HWND, UINT, UINT_PTR, DWORD) {
    if (sBeating == nullptr) return;
    const double now = NowMs();
    sBeating->mBeats[sBeating->mNext++ % kBeatsKept] = now;
    sBeating->mLongestGap = std::max(sBeating->mLongestGap, now - sBeating->mLast);
    sBeating->mLast = now;
}

int Pulse::BeatsBetween(double from, double to) const {
    int beats = 0;
    for (std::size_t back = 1; back <= std::min(mNext, kBeatsKept); ++back) {
        const double beat = mBeats[(mNext - back) % kBeatsKept];
        if (beat <= from) break;
        if (beat < to) ++beats;
    }
    return beats;
}

void Rhythm::Begin(double earliest, double latest, int periodMs) {
    mRuns = true;
    mPeriodMs = periodMs;
    mEarliest = earliest;
    mLatest = latest;
    mIndex = 0;
    mLast = 0;
    mDue = earliest + periodMs;
}

double Rhythm::Came(double now, bool isNewTurn) {
    // What one reading of the clock may differ from another's rounding.
    constexpr double kReadingMs = 0.001;
    // The component reads the clock at most this much before it calls. If something is due in between, it comes in the
    // same turn.
    constexpr double kUncertainMs = 20;
    const auto periods = [&](double moment, double begin) { return std::floor((moment - begin) / mPeriodMs); };
    if (isNewTurn && mLast != 0) mIndex = std::max(mIndex, periods(mLast, mLatest));
    const bool isEarly = now < mEarliest + (mIndex + 1) * mPeriodMs - kReadingMs;
    const double late = now - mDue;
    mLast = now;
    if (isEarly) return std::min(late, -kReadingMs);
    mIndex = std::max(mIndex + 1, periods(now - kUncertainMs, mLatest));
    mDue = mEarliest + (std::max(mIndex, periods(now, mEarliest)) + 1) * mPeriodMs;
    return std::max(late, 0.0);
}

}  // namespace kwo::soak
