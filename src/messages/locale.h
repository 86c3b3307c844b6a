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
    std::int32_t language = 0;         ///< the language identifier
    std::int32_t primaryLanguage = 0;  ///< its low 10 bits
    std::int32_t subLanguage = 0;      ///< the bits above
    bool has24Hours = false;           ///< false: 12 hours with AM and PM
    Text timeSeparator;
    Text thousandSeparator;
    Text decimalSeparator;
    std::int16_t digits = 0;            ///< digits after the decimal separator
    std::int16_t currencyDigits = 0;    ///< the same for currency
    bool leadingZero = false;           ///< 0.7 rather than .7
    std::int16_t negativeNumber = 0;    ///< the system's number for the format of negative numbers
    std::int16_t negativeCurrency = 0;  ///< the same for currency
    std::int32_t firstDayOfWeek = 0;    ///< 0 is Monday, 6 is Sunday
    std::array<Text, 7> dayNames;       ///< from Monday to Sunday
};

/// The component's one copy of the user's locale settings and time zone.
class MKWOLocale {
public:
    /// Keeps references to all of these; they must outlive it.
    MKWOLocale(platform::LocaleSource& source, platform::Clock& clock, platform::SystemErrors& system,
               frame::MKWOError& error, frame::MKWORoutines& routines)
        : mSource(source), mClock(clock), mSystem(system), mError(error), mRoutines(routines) {}

    /// Reads the settings and the time zone at the first call; later calls do nothing. A setting that the system does
    /// not tell, or that does not fit its small buffer, is empty or 0. Raises nothing.
    void KWOLocaleInit();
    /// True once KWOLocaleInit was called.
    bool LocaleLoaded() const { return mLocaleLoaded; }

    /// The settings; empty or 0 before KWOLocaleInit.
    const LocaleRecord& Record() const { return mRecord; }
    /// The user's time zone; empty before KWOLocaleInit.
    const platform::LocaleSource::TimeZone& TimeZoneInfo() const { return mTimeZoneInfo; }
    /// Whether daylight-saving time was in force: the result of GetTimeZoneInformation.
    std::uint32_t TimeZoneId() const { return mTimeZoneId; }

    /// The milliseconds from 1601-01-01 to `dateTime`; 0 for the date 0. With `localToUtc`, `dateTime` is local time
    /// and the result is UTC. Raises Overflow for a date out of range, and the platform's error if it cannot convert.
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
