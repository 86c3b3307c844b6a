#pragma once

#include "platform/locale_source.h"
#include "platform/windows/context.h"

namespace kwo::platform::windows {

/// The locale of the current user.
/// The names in a time zone are UTF-16; settings come as bytes and are read in the code page of the user's locale,
/// which may be another than the system's.
class WindowsLocaleSource final : public LocaleSource {
public:
    explicit WindowsLocaleSource(Context& context) : mLastError(context.lastError) {}

    /// GetLocaleInfoA for LOCALE_USER_DEFAULT. The beginning of a text that does not fit is dropped.
    std::optional<Text> Setting(std::uint32_t type, std::uint32_t capacity) override;
    /// GetTimeZoneInformation. A name may fill its buffer without a terminating zero.
    std::uint32_t QueryTimeZone(TimeZone& zone) override;

private:
    LastError& mLastError;
};

}  // namespace kwo::platform::windows
