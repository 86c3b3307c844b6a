#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace kwo::soak {

/// How late many things came. Its memory does not grow.
class Lateness {
public:
    void Add(double ms);
    long Count() const { return mCount; }
    /// The lateness that this part of them, 0 to 1, did not exceed.
    double Quantile(double part) const;
    double Worst() const { return mWorst; }

private:
    static constexpr double kStepMs = 0.1;
    static constexpr std::size_t kSteps = 50'000;

    std::vector<std::uint32_t> mSteps = std::vector<std::uint32_t>(kSteps + 1);
    long mCount = 0;
    double mWorst = 0;
};

/// The moments at which a thread processed timers, the latest ones. Its memory does not grow.
class Beats {
public:
    /// `now` is that of the first look.
    explicit Beats(double now) : mLast(now) {}
    /// `now` is not before the last one.
    void Add(double now);
    /// How many there were between two moments.
    int Between(double from, double to) const;
    /// The longest time without one.
    double LongestGap() const { return mLongestGap; }

private:
    static constexpr std::size_t kKept = 16'384;

    std::vector<double> mBeats = std::vector<double>(kKept);
    std::size_t mNext = 0;
    double mLast;
    double mLongestGap = 0;
};

/// A rhythm: something comes every period, never early, never twice, and missed ones come once.
class Rhythm {
public:
    /// Begins somewhere between these two moments.
    void Begin(double earliest, double latest, int periodMs);
    void Stop() { mRuns = false; }
    bool Runs() const { return mRuns; }
    int PeriodMs() const { return mPeriodMs; }
    /// When the next one is due.
    double Due() const { return mDue; }
    /// One came. `isNewTurn` says that timers were processed since the last one: what was due before has come. Returns
    /// how late it is; negative if it is early or one too many.
    double Came(double now, bool isNewTurn);
    /// When the last one came; 0 if none has.
    double Last() const { return mLast; }

private:
    bool mRuns = false;
    int mPeriodMs = 0;
    double mEarliest = 0;
    double mLatest = 0;
    double mIndex = 0;  ///< of the last one that must have come
    double mLast = 0;
    double mDue = 0;  ///< of the next one
};

}  // namespace kwo::soak
