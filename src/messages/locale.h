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
/// Later changes in the control panel do not show.
struct LocaleRecord {
    /// The language identifier, for example 1033 (0x409) for English as in the United States.
    std::int32_t language = 0;
    /// Its low 10 bits: the language alone.
    std::int32_t primaryLanguage = 0;
    /// The bits above: the country.
    std::int32_t subLanguage = 0;
    /// True for 24 hours, false for 12 hours with AM and PM.
    bool has24Hours = false;
    /// Up to 31 bytes of the ANSI code page each; empty if the system does not tell.
    Text timeSeparator;
    Text thousandSeparator;
    /// A single character; empty if the user's has more.
    Text decimalSeparator;
    /// Digits after the decimal separator.
    std::int16_t digits = 0;
    /// The same for currency.
    std::int16_t currencyDigits = 0;
    /// 0.7 rather than .7.
    bool leadingZero = false;
    /// The system's number for the format of negative numbers.
    std::int16_t negativeNumber = 0;
    /// The same for currency.
    std::int16_t negativeCurrency = 0;
    /// 0 is Monday, 6 is Sunday.
    std::int32_t firstDayOfWeek = 0;
    /// Abbreviated, from Monday to Sunday. A name that takes more than three bytes in the ANSI code page is empty.
    std::array<Text, 7> dayNames;
};

/// The component's one copy of the user's locale settings and time zone. The message table and the timers use it.
class MKWOLocale {
public:
    /// Keeps references to all of these; they must outlive it.
    MKWOLocale(platform::LocaleSource& source, platform::Clock& clock, platform::SystemErrors& system,
               frame::MKWOError& error, frame::MKWORoutines& routines)
        : mSource(source), mClock(clock), mSystem(system), mError(error), mRoutines(routines) {}

    /// Reads the settings and the time zone at the first call; later calls do nothing.
    /// A setting that the system does not tell, or that does not fit its small buffer, is empty or 0.
    /// Raises nothing but lack of memory; the next call then reads everything again.
    void KWOLocaleInit();
    /// True once KWOLocaleInit was called.
    bool LocaleLoaded() const { return mLocaleLoaded; }

    /// The settings; empty or 0 before KWOLocaleInit.
    const LocaleRecord& Record() const { return mRecord; }
    /// The user's time zone; empty before KWOLocaleInit and if the system does not tell.
    const platform::LocaleSource::TimeZone& TimeZoneInfo() const { return mTimeZoneInfo; }
    /// Whether daylight-saving time was in force: the result of GetTimeZoneInformation, see
    /// LocaleSource::QueryTimeZone.
    /// 0 before KWOLocaleInit.
    std::uint32_t TimeZoneId() const { return mTimeZoneId; }

    /// The milliseconds from 1601-01-01 to `dateTime`, with four decimals; 0 for the date 0.
    /// Needs no KWOLocaleInit. With `localToUtc`, `dateTime` is local time and the result is UTC; the offset is that
    /// of today.
    /// Raises Overflow for a date out of range or not a number, and the platform's error if it cannot convert.
    platform::Milliseconds KWO_DateToFILETIME(platform::Date dateTime, bool localToUtc);

private:
    /// The setting without blanks around it; empty if it does not fit `capacity` bytes.
    Text Setting(std::uint32_t type, std::uint32_t capacity);
    void ReadLanguage();

    platform::LocaleSource& mSource;
    platform::Clock& mClock;
    platform::SystemErrors& mSystem;
    frame::MKWOError& mError;
    frame::MKWORoutines& mRoutines;
    /// Set when everything was read.
    bool mLocaleLoaded = false;
    LocaleRecord mRecord;
    platform::LocaleSource::TimeZone mTimeZoneInfo;
    std::uint32_t mTimeZoneId = 0;
};

}  // namespace kwo::messages
