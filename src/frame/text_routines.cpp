#include "frame/text_routines.h"

#include <algorithm>
#include <string>

namespace kwo::frame {

namespace {

template <class Change>
Text Mapped(TextView text, Change change) {
    Text result(text);
    std::transform(result.begin(), result.end(), result.begin(), change);
    return result;
}

}  // namespace

Text Trim(TextView text) {
    const auto first = text.find_first_not_of(u' ');
    return first == TextView::npos ? Text() : TrimRight(text.substr(first));
}

Text TrimRight(TextView text) {
    return Text(text.substr(0, text.find_last_not_of(u' ') + 1));
}

Text AsciiUpper(TextView text) {
    return Mapped(text, [](char16_t c) { return c >= u'a' && c <= u'z' ? static_cast<char16_t>(c - u'a' + u'A') : c; });
}

Text AsciiLower(TextView text) {
    return Mapped(text, [](char16_t c) { return c >= u'A' && c <= u'Z' ? static_cast<char16_t>(c - u'A' + u'a') : c; });
}

Text Decimal(std::int64_t number) {
    const std::string digits = std::to_string(number);
    return Text(digits.begin(), digits.end());
}

Text ReplaceAll(TextView text, TextView from, TextView to) {
    if (from.empty()) return Text(text);
    Text result;
    for (;;) {
        const auto at = text.find(from);
        result += text.substr(0, at);
        if (at == TextView::npos) return result;
        result += to;
        text.remove_prefix(at + from.size());
    }
}

Text KWO_FileNamePart(TextView path) {
    const Text trimmed = Trim(path);
    TextView name = trimmed;
    if (name.empty() || name.substr(1) == u":\\") return {};
    if (name.back() == u'\\') name.remove_suffix(1);
    auto separator = name.rfind(u'\\');
    if (separator == TextView::npos) separator = name.rfind(u'/');
    return Text(separator == TextView::npos ? name : name.substr(separator + 1));
}

Text KWO_AddSeparator(TextView path, TextView separator) {
    const bool hasOne = path.ends_with(u'/') || path.ends_with(u'\\') || path.ends_with(separator);
    Text result(path);
    if (!hasOne) result += separator;
    return result;
}

Text KWO_CutAtNul(TextView text) {
    return Text(text.substr(0, text.find(u'\0')));
}

Text KWO_InsertValue(TextView text, TextView value, TextView marker, bool quote) {
    if (text.empty() || marker.empty()) return {};
    Text shown(value);
    if (quote) shown = u"'" + shown + u"'";

    const auto at = text.find(marker);
    Text result(text.substr(0, at));
    // Intended: a value without a marker is added to the text.
    if (at == TextView::npos) return result + u" " + shown;
    result += shown;
    result += text.substr(at + marker.size());
    return result;
}

Text KWO_FillTemplate(TextView text, std::span<const Text> values) {
    const bool numbered = text.find(u"%1") != TextView::npos;
    Text result(text);
    Text marker(numbered ? u"%" : u"|");
    std::int64_t number = 0;
    for (const Text& value : values) {
        if (numbered) marker.replace(1, Text::npos, Decimal(++number));
        result = KWO_InsertValue(result, value, marker, false);
    }
    return result;
}

}  // namespace kwo::frame
