#include "platform/simulated/log.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <iterator>

#include "platform/simulated/text_codec.h"

namespace kwo::platform::simulated {
namespace {

template <class Number>
std::string Digits(Number number) {
    std::array<char, 64> buffer;
    const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), number).ptr;
    return {buffer.data(), end};
}

struct ValueText {
    std::string operator()(Empty) const { return "Empty"; }
    std::string operator()(Missing) const { return "Missing"; }
    std::string operator()(Null) const { return "Null"; }
    std::string operator()(Currency value) const { return Digits(value.AsDouble()); }
    std::string operator()(Date value) const { return "Date " + Digits(value.days); }
    std::string operator()(const Text& value) const { return '"' + Shown(TextView(value)) + '"'; }
    std::string operator()(bool value) const { return value ? "True" : "False"; }
    std::string operator()(std::uint8_t value) const { return Digits(static_cast<unsigned>(value)); }
    std::string operator()(ErrorValue value) const { return "Error " + Digits(value.number); }
    std::string operator()(const ForeignRef&) const { return "Foreign"; }
    std::string operator()(const HostObjectRef& value) const {
        return value == nullptr ? "Nothing" : '<' + ToUtf8(value->TypeName()) + '>';
    }
    template <class Number>
    std::string operator()(Number value) const {
        return Digits(value);
    }
};

}  // namespace

std::vector<std::string> Log::Starting(std::string_view prefix) const {
    std::vector<std::string> found;
    std::copy_if(mLines.begin(), mLines.end(), std::back_inserter(found),
                 [prefix](const std::string& line) { return line.starts_with(prefix); });
    return found;
}

std::string Shown(TextView text) {
    std::string shown;
    for (const char c : ToUtf8(text)) {
        const auto byte = static_cast<unsigned char>(c);
        if (c == '\r') {
            shown += "\\r";
        } else if (c == '\n') {
            shown += "\\n";
        } else if (c == '\0') {
            shown += "\\0";
        } else if (byte < 0x20) {
            constexpr std::string_view kDigits = "0123456789abcdef";
            shown += "\\x";
            shown += kDigits[byte >> 4];
            shown += kDigits[byte & 15];
        } else {
            shown += c;
        }
    }
    return shown;
}

std::string Shown(const Variant& value) {
    return std::visit(ValueText{}, value);
}

std::string Shown(Point point) {
    return '(' + std::to_string(point.x) + ',' + std::to_string(point.y) + ')';
}

std::string Shown(const Rect& area) {
    return '(' + std::to_string(area.left) + ',' + std::to_string(area.top) + ',' + std::to_string(area.right) + ',' +
           std::to_string(area.bottom) + ')';
}

std::string On(std::string_view call, Handle handle) {
    return std::string(call) + ' ' + std::to_string(handle) + ' ';
}

std::string Hex(std::uint32_t number) {
    std::array<char, 16> buffer;
    const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), number, 16).ptr;
    return "0x" + std::string(buffer.data(), end);
}

}  // namespace kwo::platform::simulated
