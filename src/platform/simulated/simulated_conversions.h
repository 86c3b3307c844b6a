#pragma once

#include "platform/conversions.h"
#include "platform/simulated/world.h"

namespace kwo::platform::simulated {

/// The automation rules in the United States' English locale, ANSI in Windows-1252 unless the desktop has another code
/// page. An object has no default value here.
/// Calls that can fail: VariantChangeType (every conversion of a value), VarDateFromStr, VarFormat,
/// MultiByteToWideChar and WideCharToMultiByte. They raise the planned code; only ParseDate returns nothing.
class SimulatedConversions final : public Conversions {
public:
    explicit SimulatedConversions(World& world);

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

    /// Knows the letters of the ANSI code page.
    char16_t ToUpper(char16_t character) override;
    Text FromAnsi(std::string_view bytes) override;
    std::string ToAnsi(TextView text) override;

private:
    World& mWorld;
};

}  // namespace kwo::platform::simulated
