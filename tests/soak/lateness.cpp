#include "lateness.h"

#include <algorithm>
#include <cmath>

namespace kwo::soak {

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

void Beats::Add(double now) {
    mBeats[mNext++ % kKept] = now;
    mLongestGap = std::max(mLongestGap, now - mLast);
    mLast = now;
}

int Beats::Between(double from, double to) const {
    int beats = 0;
    for (std::size_t back = 1; back <= std::min(mNext, kKept); ++back) {
        const double beat = mBeats[(mNext - back) % kKept];
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
