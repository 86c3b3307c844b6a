#pragma once

#include "platform/locale_source.h"
#include "platform/windows/context.h"

namespace kwo::platform::windows {

/// The locale of the current user. The names in a time zone are UTF-16, settings come in the ANSI code page.
class WindowsLocaleSource final : public LocaleSource {
public:
    explicit WindowsLocaleSource(Context& context) : mLastError(context.lastError) {}

    std::optional<Text> Setting(std::uint32_t type, std::uint32_t capacity) override;
    std::uint32_t QueryTimeZone(TimeZone& zone) override;

private:
    LastError& mLastError;
};

}  // namespace kwo::platform::windows
