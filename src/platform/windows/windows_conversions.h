#pragma once

#include "platform/conversions.h"

namespace kwo::platform::windows {

/// The automation library's own conversions (VariantChangeTypeEx, VarFormat), in the user's locale and the system's
/// code page.
///
/// It refuses what the library would convert in a way of its own: arrays of bytes as texts, texts with a zero
/// character, and unsigned numbers that change their sign. It evens out where systems differ: how a number between -1
/// and 1 is rounded, and what becomes of a value that is not a number.
class WindowsConversions final : public Conversions {
public:
    std::int16_t ToInt16(const Variant& value) override;
    std::int32_t ToInt32(const Variant& value) override;
    /// By com_support::To32Bits, as for handles in arguments of late-bound calls.
    std::int32_t To32Bits(const Variant& value) override;
    float ToSingle(const Variant& value) override;
    double ToDouble(const Variant& value) override;
    bool ToBoolean(const Variant& value) override;
    /// Checks the calendar itself: the system lets a value pass that is a date already.
    Date ToDate(const Variant& value) override;
    Text ToText(const Variant& value) override;

    /// VarDateFromStr. A lack of memory counts as no date.
    std::optional<Date> ParseDate(TextView text) override;
    /// VarFormat. A value between -1 and 1 is rounded first if the pattern has no decimals.
    Text FormatNumber(double value, TextView pattern) override;
    Text FormatDate(Date value, TextView pattern) override;

    /// CharUpperBuffW, for one character.
    char16_t ToUpper(char16_t character) override;
    Text FromAnsi(std::string_view bytes) override;
    std::string ToAnsi(TextView text) override;
};

}  // namespace kwo::platform::windows
