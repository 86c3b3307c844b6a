#include "platform/simulated/simulated_conversions.h"

#include <cfloat>
#include <cmath>
#include <limits>
#include <string>
#include <utility>

#include "platform/simulated/calendar.h"
#include "platform/simulated/english_dates.h"
#include "platform/simulated/english_numbers.h"
#include "platform/simulated/text_codec.h"

namespace kwo::platform::simulated {
namespace {

constexpr auto kTypeMismatch = static_cast<std::int32_t>(RuntimeError::TypeMismatch);
constexpr auto kOverflow = static_cast<std::int32_t>(RuntimeError::Overflow);

[[noreturn]] void Mismatch() {
    RaiseRuntime(RuntimeError::TypeMismatch);
}
[[noreturn]] void Overflow() {
    RaiseRuntime(RuntimeError::Overflow);
}

/// Any value as a number. `patternBits` is the size of the integer wanted, 0 for none: a hexadecimal number that fills
/// it may set its sign.
struct Number {
    int patternBits = 0;

    double operator()(Empty) const { return 0; }
    double operator()(Missing) const { Mismatch(); }
    double operator()(Null) const { Mismatch(); }
    double operator()(ErrorValue) const { Mismatch(); }
    double operator()(const HostObjectRef&) const { Mismatch(); }
    double operator()(const ForeignRef&) const { Mismatch(); }
    double operator()(Currency value) const { return value.AsDouble(); }
    double operator()(Date value) const { return value.days; }
    double operator()(bool value) const { return value ? -1 : 0; }
    double operator()(const Text& text) const {
        const auto number = ParseNumber(text);
        if (!number) Mismatch();
        if (number->tooLarge) Overflow();
        if (!number->isPattern || patternBits == 0) return number->value;
        const double range = std::ldexp(1.0, patternBits);
        return number->value >= range / 2 && number->value < range ? number->value - range : number->value;
    }
    template <class Plain>
    double operator()(Plain value) const {
        return static_cast<double>(value);
    }
};

double HalvesToEven(double value) {
    const double below = std::floor(value);
    const double rest = value - below;
    if (rest < 0.5 || (rest == 0.5 && std::fmod(below, 2.0) == 0)) return below;
    return below + 1;
}

template <class Integer>
Integer ToInteger(const Variant& value) {
    const double number = HalvesToEven(std::visit(Number{sizeof(Integer) * 8}, value));
    // A value that is not a number fails both comparisons.
    if (!(number >= std::numeric_limits<Integer>::min() && number <= std::numeric_limits<Integer>::max())) Overflow();
    return static_cast<Integer>(number);
}

Text CurrencyText(Currency value) {
    const bool negative = value.scaled < 0;
    const std::uint64_t magnitude =
        negative ? 0 - static_cast<std::uint64_t>(value.scaled) : static_cast<std::uint64_t>(value.scaled);
    constexpr auto kScale = static_cast<std::uint64_t>(Currency::kScale);
    std::string digits(negative ? 1 : 0, '-');
    digits += std::to_string(magnitude / kScale);
    if (const std::uint64_t rest = magnitude % kScale; rest != 0) {
        digits += '.' + std::to_string(kScale + rest).substr(1);
        digits.erase(digits.find_last_not_of('0') + 1);
    }
    return Text(digits.begin(), digits.end());
}

struct AsText {
    Text operator()(Empty) const { return {}; }
    Text operator()(Missing) const { Mismatch(); }
    Text operator()(Null) const { Mismatch(); }
    Text operator()(ErrorValue) const { Mismatch(); }
    Text operator()(const HostObjectRef&) const { Mismatch(); }
    Text operator()(const ForeignRef&) const { Mismatch(); }
    Text operator()(float value) const { return NumberText(static_cast<double>(value), 7); }
    Text operator()(double value) const { return NumberText(value, 15); }
    Text operator()(Currency value) const { return CurrencyText(value); }
    Text operator()(Date value) const {
        if (!IsWithinCalendar(value.days)) Mismatch();
        return DateText(value);
    }
    Text operator()(const Text& value) const { return value; }
    Text operator()(bool value) const { return value ? u"True" : u"False"; }
    template <class Integer>
    Text operator()(Integer value) const {
        const std::string digits = std::to_string(value);
        return Text(digits.begin(), digits.end());
    }
};

}  // namespace

SimulatedConversions::SimulatedConversions(World& world) : mWorld(world) {
    world.faults.Declare({{"VariantChangeType", {kTypeMismatch, kOverflow, Faults::kNoMemory}},
                          {"VarDateFromStr", {kTypeMismatch, Faults::kNoMemory}},
                          {"VarFormat", {kOverflow, Faults::kNoMemory}},
                          {"MultiByteToWideChar", {Faults::kNoMemory}},
                          {"WideCharToMultiByte", {Faults::kNoMemory}}});
}

std::int16_t SimulatedConversions::ToInt16(const Variant& value) {
    const Call call(mWorld, "VariantChangeType");
    call.RaiseIfPlanned();
    return ToInteger<std::int16_t>(value);
}

std::int32_t SimulatedConversions::ToInt32(const Variant& value) {
    const Call call(mWorld, "VariantChangeType");
    call.RaiseIfPlanned();
    return ToInteger<std::int32_t>(value);
}

std::int32_t SimulatedConversions::To32Bits(const Variant& value) {
    const Call call(mWorld, "VariantChangeType");
    call.RaiseIfPlanned();
    const double number = std::nearbyint(std::visit(Number{}, value));
    const bool fits = number >= double{INT32_MIN} && number <= double{UINT32_MAX};
    if (!fits) Overflow();
    return static_cast<std::int32_t>(static_cast<std::int64_t>(number));
}

float SimulatedConversions::ToSingle(const Variant& value) {
    const Call call(mWorld, "VariantChangeType");
    call.RaiseIfPlanned();
    const double number = std::visit(Number{}, value);
    if (std::fabs(number) > static_cast<double>(FLT_MAX)) Overflow();
    return static_cast<float>(number);
}

double SimulatedConversions::ToDouble(const Variant& value) {
    const Call call(mWorld, "VariantChangeType");
    call.RaiseIfPlanned();
    return std::visit(Number{}, value);
}

bool SimulatedConversions::ToBoolean(const Variant& value) {
    const Call call(mWorld, "VariantChangeType");
    call.RaiseIfPlanned();
    if (const auto* text = std::get_if<Text>(&value)) {
        const Text folded = Folded(*text);
        if (folded == u"true" || folded == u"#true#") return true;
        if (folded == u"false" || folded == u"#false#") return false;
    }
    return std::visit(Number{}, value) != 0;
}

Date SimulatedConversions::ToDate(const Variant& value) {
    const Call call(mWorld, "VariantChangeType");
    call.RaiseIfPlanned();
    if (const auto* text = std::get_if<Text>(&value)) {
        const auto date = ParseEnglishDate(*text);
        if (!date) Mismatch();
        return *date;
    }
    const double days = std::visit(Number{}, value);
    if (!IsWithinCalendar(days)) Overflow();
    return {days};
}

Text SimulatedConversions::ToText(const Variant& value) {
    const Call call(mWorld, "VariantChangeType");
    call.RaiseIfPlanned();
    return std::visit(AsText{}, value);
}

std::optional<Date> SimulatedConversions::ParseDate(TextView text) {
    const Call call(mWorld, "VarDateFromStr");
    if (call.Status()) return std::nullopt;
    return ParseEnglishDate(text);
}

Text SimulatedConversions::FormatNumber(double value, TextView pattern) {
    const Call call(mWorld, "VarFormat");
    call.RaiseIfPlanned();
    return FormattedNumber(value, pattern);
}

Text SimulatedConversions::FormatDate(Date value, TextView pattern) {
    const Call call(mWorld, "VarFormat");
    call.RaiseIfPlanned();
    if (!IsWithinCalendar(value.days)) Overflow();
    return FormattedDate(value, pattern);
}

char16_t SimulatedConversions::ToUpper(char16_t character) {
    constexpr char16_t kDistance = 0x20;
    if (character == u'ÿ') return u'Ÿ';
    if (character == u'÷') return character;
    for (const auto& [first, last] : {std::pair{u'a', u'z'}, {u'à', u'þ'}, {u'α', u'ρ'}, {u'σ', u'ω'}, {u'а', u'я'}})
        if (character >= first && character <= last) return static_cast<char16_t>(character - kDistance);
    return character;
}

Text SimulatedConversions::FromAnsi(std::string_view bytes) {
    const Call call(mWorld, "MultiByteToWideChar");
    call.RaiseIfPlanned();
    return simulated::FromAnsi(bytes, mWorld.codePage);
}

std::string SimulatedConversions::ToAnsi(TextView text) {
    const Call call(mWorld, "WideCharToMultiByte");
    call.RaiseIfPlanned();
    return simulated::ToAnsi(text, mWorld.codePage);
}

}  // namespace kwo::platform::simulated
