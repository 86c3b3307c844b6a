#include "platform/windows/windows_locale_source.h"

#include <algorithm>
#include <string>

#include "platform/windows/ansi.h"

namespace kwo::platform::windows {

namespace {

LocaleSource::ChangeDate ToChangeDate(const SYSTEMTIME& date) {
    return {date.wYear, date.wMonth, date.wDayOfWeek, date.wDay, date.wHour, date.wMinute};
}

/// The code page that the system answers in, which is the user's locale's own and not the process's.
UINT CodePageOfTheUser() {
    DWORD codePage = 0;
    const int written = ::GetLocaleInfoW(LOCALE_USER_DEFAULT, LOCALE_IDEFAULTANSICODEPAGE | LOCALE_RETURN_NUMBER,
                                         reinterpret_cast<wchar_t*>(&codePage), sizeof codePage / sizeof(wchar_t));
    return written > 0 ? codePage : CP_ACP;
}

template <std::size_t Size>
Text NameIn(const wchar_t (&buffer)[Size]) {
    return Text(buffer, std::find(buffer, buffer + Size, L'\0'));
}

}  // namespace

std::optional<Text> WindowsLocaleSource::Setting(std::uint32_t type, std::uint32_t capacity) {
    std::string buffer(capacity, '\0');
    const int written =
        mLastError.After(::GetLocaleInfoA(LOCALE_USER_DEFAULT, type, buffer.data(), static_cast<int>(buffer.size())));
    // After a failure the buffer may hold the beginning of the text. With the capacity 0 the call reports the size it
    // needs.
    if (written <= 0 || capacity == 0) return std::nullopt;
    return FromAnsi(std::string_view(buffer).substr(0, static_cast<std::size_t>(written) - 1), CodePageOfTheUser());
}

std::uint32_t WindowsLocaleSource::QueryTimeZone(TimeZone& zone) {
    TIME_ZONE_INFORMATION record = {};
    const DWORD id = mLastError.After(::GetTimeZoneInformation(&record));
    if (id == TIME_ZONE_ID_INVALID) return id;
    zone = {
        static_cast<std::int32_t>(record.Bias),         NameIn(record.StandardName), ToChangeDate(record.StandardDate),
        static_cast<std::int32_t>(record.StandardBias), NameIn(record.DaylightName), ToChangeDate(record.DaylightDate),
        static_cast<std::int32_t>(record.DaylightBias)};
    return id;
}

}  // namespace kwo::platform::windows
