#pragma once

#include "platform/conversions.h"

namespace kwo::platform::windows {

/// The automation library's own conversions, in the user's locale and the system's code page.
class WindowsConversions final : public Conversions {
public:
    std::int16_t ToInt16(const Variant& value) override;
    std::int32_t ToInt32(const Variant& value) override;
    std::int32_t To32Bits(const Variant& value) override;
    float ToSingle(const Variant& value) override;
    double ToDouble(const Variant& value) override;
    bool ToBoolean(const Variant& value) override;
    Date ToDate(const Variant& value) override;
    Text ToText(const Variant& value) override;

    std::optional<Date> ParseDate(TextView text) override;
    Text FormatNumber(double value, TextView pattern) override;
    Text FormatDate(Date value, TextView pattern) override;

    char16_t ToUpper(char16_t character) override;
    Text FromAnsi(std::string_view bytes) override;
    std::string ToAnsi(TextView text) override;
};

}  // namespace kwo::platform::windows
