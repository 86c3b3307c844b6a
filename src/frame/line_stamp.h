#pragma once

#include <cstdint>
#include <optional>

#include "frame/millisecond_clock.h"
#include "platform/clock.h"
#include "platform/conversions.h"

namespace kwo::frame {

/// When a line of the trace was written: the rules between days, and the time in front of each line.
class LineStamp {
public:
    LineStamp(platform::Clock& clock, MillisecondClock& milliseconds, platform::Conversions& conversions)
        : mClock(clock), mMilliseconds(milliseconds), mConversions(conversions) {}

    /// Takes up what the user's locale is now.
    void ReadLocale();
    const platform::Text& DecimalPoint() const { return mDecimalPoint; }
    void SetNow();
    /// The rule of this day with its line end when it is another one than at the last call, else empty.
    platform::Text RuleOfNewDay();
    platform::Text RuleOfDay();
    void ForgetDay() { mDay.reset(); }
    /// Puts the time of day and the milliseconds since the last call behind `line`: "10:04:31 002.41".
    void AppendTime(platform::Text& line);

private:
    std::int64_t mToday = 0;
    std::int32_t mSecond = 0;
    std::optional<std::int64_t> mDay;
    std::optional<platform::Milliseconds> mLastLine;

    std::int32_t mShownSecond = -1;
    platform::Text mShownTime;
    platform::Text mDecimalPoint;

    platform::Clock& mClock;
    MillisecondClock& mMilliseconds;
    platform::Conversions& mConversions;
};

}  // namespace kwo::frame
