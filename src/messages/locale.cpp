#include "messages/locale.h"

#include <cmath>

#include "platform/component_error.h"

namespace kwo::messages {

namespace {

using platform::Date;
using platform::Milliseconds;

constexpr std::int32_t kPrimaryLanguageBits = 0x3FF;
constexpr std::int32_t kSubLanguageUnit = 1024;
constexpr std::uint32_t kLanguage = 1;
constexpr std::uint32_t kLargeBuffer = 32;
constexpr std::uint32_t kFirstDayName = 49;
constexpr std::uint32_t kDayNameCapacity = 4;

/// The number in the text, which has no more digits than the small buffers hold; 0 for any other text.
template <class Number>
Number ToNumber(TextView text) {
    const bool negative = text.starts_with(u'-');
    if (negative || text.starts_with(u'+')) text.remove_prefix(1);
    std::int32_t value = 0;
    for (const char16_t c : text) {
        if (c < u'0' || c > u'9') return 0;
        value = value * 10 + (c - u'0');
    }
    return static_cast<Number>(negative ? -value : value);
}

/// A setting of the system, the size of its buffer, and where its text goes.
struct Field {
    std::uint32_t type;
    std::uint32_t capacity;
    void (*read)(LocaleRecord& record, const Text& text);
};

// Intended: the buffers are small. What does not fit is lost, such as a decimal separator of two characters.
// clang-format off
constexpr Field kFields[] = {
    {35,   32, [](LocaleRecord& record, const Text& text) { record.has24Hours = text.starts_with(u'1'); }},
    {30,   32, [](LocaleRecord& record, const Text& text) { record.timeSeparator = text; }},
    {15,   32, [](LocaleRecord& record, const Text& text) { record.thousandSeparator = text; }},
    {14,    2, [](LocaleRecord& record, const Text& text) { record.decimalSeparator = text; }},
    {17,    3, [](LocaleRecord& record, const Text& text) { record.digits = ToNumber<std::int16_t>(text); }},
    {25,    3, [](LocaleRecord& record, const Text& text) { record.currencyDigits = ToNumber<std::int16_t>(text); }},
    {18,    2, [](LocaleRecord& record, const Text& text) { record.leadingZero = ToNumber<std::int16_t>(text) != 0; }},
    {4112,  2, [](LocaleRecord& record, const Text& text) { record.negativeNumber = ToNumber<std::int16_t>(text); }},
    {28,    3, [](LocaleRecord& record, const Text& text) { record.negativeCurrency = ToNumber<std::int16_t>(text); }},
    {4108,  4, [](LocaleRecord& record, const Text& text) { record.firstDayOfWeek = ToNumber<std::int32_t>(text); }},
};
// clang-format on

}  // namespace

void MKWOLocale::KWOLocaleInit() {
    if (mLocaleLoaded) return;
    mTimeZoneId = mSource.QueryTimeZone(mTimeZoneInfo);
    ReadLanguage();
    for (const Field& field : kFields)
        field.read(mRecord, Setting(field.type, field.capacity));
    for (std::uint32_t day = 0; day < mRecord.dayNames.size(); ++day)
        mRecord.dayNames[day] = Setting(kFirstDayName + day, kDayNameCapacity);
    mLocaleLoaded = true;
}

void MKWOLocale::ReadLanguage() {
    try {
        mRecord.language = mRoutines.KWO_HexToLong(Setting(kLanguage, kLargeBuffer));
    } catch (const platform::ComponentError&) {
        mRecord.language = 0;
    }
    mRecord.primaryLanguage = mRecord.language & kPrimaryLanguageBits;
    mRecord.subLanguage = mRecord.language / kSubLanguageUnit;
}

Text MKWOLocale::Setting(std::uint32_t type, std::uint32_t capacity) {
    return frame::Trim(frame::KWO_CutAtNul(mSource.Setting(type, capacity).value_or(Text())));
}

Milliseconds MKWOLocale::KWO_DateToFILETIME(Date dateTime, bool localToUtc) {
    constexpr double kDaysBefore = 109'205;  // from 1601-01-01 to 1899-12-30
    constexpr double kMillisecondsPerDay = 86'400'000;
    constexpr double kTooMany = 9'223'372'036'854'775'808.0;
    if (dateTime.days == 0) return {};
    const double scaled =
        std::nearbyint((dateTime.days + kDaysBefore) * kMillisecondsPerDay * static_cast<double>(Milliseconds::kScale));
    if (!(scaled < kTooMany && scaled >= -kTooMany)) platform::RaiseRuntime(platform::RuntimeError::Overflow);
    const auto fileTime = static_cast<std::int64_t>(scaled);
    if (!localToUtc) return {fileTime};
    const auto utc = mClock.LocalFileTimeToUtc(fileTime);
    if (!utc) mError.KWO_RaiseError(mSystem.Last(), u"MKWOLocale.KWO_DateToFILETIME", {}, {}, true);
    return {*utc};
}

}  // namespace kwo::messages
