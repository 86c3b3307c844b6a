#include "frame/millisecond_clock.h"

#include <limits>

namespace kwo::frame {

namespace {

using platform::Currency;
using platform::Milliseconds;

constexpr std::int64_t kScaledPerSecond = 1000 * Currency::kScale;
constexpr std::int64_t kTickRange = std::int64_t{1} << 32;

/// part * kScaledPerSecond / whole for 0 <= part < whole, to the nearest, halves to even, without a wider type. Exact
/// while a tenth of the type's range holds `whole`.
std::int64_t ScaledFraction(std::int64_t part, std::int64_t whole) {
    std::int64_t quotient = 0;
    std::int64_t remainder = part;
    if (whole <= std::numeric_limits<std::int64_t>::max() / kScaledPerSecond) {
        quotient = part * kScaledPerSecond / whole;
        remainder = part * kScaledPerSecond % whole;
    } else {
        for (std::int64_t digit = 1; digit < kScaledPerSecond; digit *= 10) {
            remainder *= 10;
            quotient = quotient * 10 + remainder / whole;
            remainder %= whole;
        }
    }
    const std::int64_t missing = whole - remainder;
    if (remainder > missing || (remainder == missing && quotient % 2 != 0)) ++quotient;
    return quotient;
}

}  // namespace

Milliseconds MillisecondClock::KWO_TimerMs() {
    if (!mAsked) {
        mAsked = true;
        mFrequency = mClock.CounterFrequency();
        if (mFrequency && *mFrequency <= 0) mFrequency.reset();
    }
    return mFrequency ? FromCounter(*mFrequency) : FromTicks();
}

Milliseconds MillisecondClock::FromCounter(std::int64_t frequency) {
    const std::int64_t count = mClock.Counter();
    return {count / frequency * kScaledPerSecond + ScaledFraction(count % frequency, frequency)};
}

Milliseconds MillisecondClock::FromTicks() {
    const std::uint32_t ticks = mClock.TickCount();
    if (ticks < mLastTicks) mWrapOffset += kTickRange;
    mLastTicks = ticks;
    return Milliseconds::Whole(mWrapOffset + ticks);
}

}  // namespace kwo::frame
