#pragma once

#include <array>
#include <cstdint>

#include "frame/error.h"
#include "frame/routines.h"
#include "platform/clock.h"
#include "platform/locale_source.h"
#include "platform/values.h"

namespace kwo::messages {

using platform::Text;
using platform::TextView;

/// The user's locale settings, as they were when they were first needed.
struct LocaleRecord {
    std::int32_t LocaleLanguage = 0;         ///< the language identifier
    std::int32_t LocalePrimaryLanguage = 0;  ///< its low 10 bits
    std::int32_t LocaleSubLanguage = 0;      ///< the bits above
    bool Locale24Hour = false;
    Text LocaleTimeSep;
    Text LocaleThousandSep;
    Text LocaleDecimalSep;
    std::int16_t LocaleDigits = 0;
    std::int16_t LocaleCurrDigits = 0;
    bool LocaleLeadingZero = false;
    std::int16_t LocaleNegNumber = 0;
    std::int16_t LocaleNegCurr = 0;
    std::int32_t LocaleFirstDayOfWeek = 0;  ///< 0 is Monday, 6 is Sunday
    std::array<Text, 7> LocaleDayAbbrev;    ///< from Monday to Sunday
};

/// The component's one copy of the user's locale settings and time zone.
class MKWOLocale {
public:
    MKWOLocale(platform::LocaleSource& source, platform::Clock& clock, platform::SystemErrors& system,
               frame::MKWOError& error, frame::MKWORoutines& routines)
        : mSource(source), mClock(clock), mSystem(system), mError(error), mRoutines(routines) {}

    /// Reads the settings unless that was done before. What the platform does not tell, also because it does not fit
    /// the buffer, is empty or 0. Raises nothing.
    void KWOLocaleInit();
    bool LocaleLoaded() const { return mLocaleLoaded; }

    const LocaleRecord& Record() const { return mRecord; }
    const platform::LocaleSource::TimeZone& TimeZoneInfo() const { return mTimeZoneInfo; }
    std::uint32_t TimeZoneId() const { return mTimeZoneId; }

    /// Milliseconds from 1601-01-01 to the date, which is what a file time is when it is read as this type; 0 for the
    /// date 0. Raises Overflow for what the type does not hold, and the platform's error when `localToUtc` fails.
    platform::Milliseconds KWO_DateToFILETIME(platform::Date dateTime, bool localToUtc);

private:
    Text Setting(std::uint32_t type, std::uint32_t capacity);
    void ReadLanguage();

    platform::LocaleSource& mSource;
    platform::Clock& mClock;
    platform::SystemErrors& mSystem;
    frame::MKWOError& mError;
    frame::MKWORoutines& mRoutines;
    bool mLocaleLoaded = false;
    LocaleRecord mRecord;
    platform::LocaleSource::TimeZone mTimeZoneInfo;
    std::uint32_t mTimeZoneId = 0;
};

}  // namespace kwo::messages
