#pragma once

#include <cstdint>
#include <optional>

#include "frame/millisecond_clock.h"
#include "platform/clock.h"
#include "platform/conversions.h"

namespace kwo::frame {

/// The times in the trace's log: a line with the date between two days, and the time at the beginning of each line.
///
///     stamp.SetNow();
///     Text text = stamp.RuleOfNewDay();
///     stamp.AppendTime(text);
///
/// Call SetNow for each entry. RuleOfNewDay, RuleOfDay and AppendTime then use that moment, so an entry at midnight
/// does not belong to two days.
class LineStamp {
public:
    /// Keeps references to all of these; they must outlive it.
    LineStamp(platform::Clock& clock, MillisecondClock& milliseconds, platform::Conversions& conversions)
        : mClock(clock), mMilliseconds(milliseconds), mConversions(conversions) {}

    /// Reads the decimal separator and the formats of the user's locale again.
    /// Call it once before the first line of a log. Lines keep these formats until the next call.
    void ReadLocale();
    /// The decimal separator that ReadLocale found; empty before.
    const platform::Text& DecimalPoint() const { return mDecimalPoint; }
    /// Takes the wall clock's time for the lines that follow, cut to whole seconds.
    void SetNow();
    /// The line of the current day, with its line end, if the day differs from that of the previous call. Else empty.
    platform::Text RuleOfNewDay();
    /// The line of the current day in any case, with its line end: the date in the user's short format, a blank and 60
    /// equals signs.
    platform::Text RuleOfDay();
    /// Makes the next RuleOfNewDay return the line in any case.
    void ForgetDay() { mDay.reset(); }
    /// Appends the time of day and the milliseconds since the previous call to `line`: "10:04:31 002.41".
    /// The first call says 000.00.
    /// The milliseconds are those of the millisecond clock, with two decimals; spans of 1000 and more simply have more
    /// digits.
    void AppendTime(platform::Text& line);

private:
    /// The day of SetNow, as the whole part of a date.
    std::int64_t mToday = 0;
    /// The second of that day, 0 to 86,399.
    std::int32_t mSecond = 0;
    /// The day of the last line with a date; nothing before the first.
    std::optional<std::int64_t> mDay;
    /// When AppendTime ran last; nothing before the first line.
    std::optional<platform::Milliseconds> mLastLine;

    /// The second that mShownTime shows, so that a time is formatted once a second.
    std::int32_t mShownSecond = -1;
    platform::Text mShownTime;
    platform::Text mDecimalPoint;

    platform::Clock& mClock;
    MillisecondClock& mMilliseconds;
    platform::Conversions& mConversions;
};

}  // namespace kwo::frame
