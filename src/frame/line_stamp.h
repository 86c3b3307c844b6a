#pragma once

#include <cstdint>
#include <optional>

#include "frame/millisecond_clock.h"
#include "platform/clock.h"
#include "platform/conversions.h"

namespace kwo::frame {

/// The times in the trace's log: a line with the date between two days, and the time at the beginning of each line.
///
/// Call SetNow for each entry. RuleOfNewDay, RuleOfDay and AppendTime then use that moment.
class LineStamp {
public:
    /// Keeps references to all of these; they must outlive it.
    LineStamp(platform::Clock& clock, MillisecondClock& milliseconds, platform::Conversions& conversions)
        : mClock(clock), mMilliseconds(milliseconds), mConversions(conversions) {}

    /// Reads the decimal separator and the formats of the user's locale again. Call it once before the first line of a
    /// log.
    void ReadLocale();
    /// The decimal separator that ReadLocale found.
    const platform::Text& DecimalPoint() const { return mDecimalPoint; }
    /// Takes the wall clock's time for the lines that follow.
    void SetNow();
    /// The line of the current day, with its line end, if the day differs from that of the previous call. Else empty.
    platform::Text RuleOfNewDay();
    /// The line of the current day in any case: the date in the user's short format and 60 equals signs.
    platform::Text RuleOfDay();
    /// Makes the next RuleOfNewDay return the line in any case.
    void ForgetDay() { mDay.reset(); }
    /// Appends the time of day and the milliseconds since the previous call to `line`: "10:04:31 002.41". The first
    /// call says 000.00.
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
