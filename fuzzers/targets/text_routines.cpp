// The text routines against others that go through the text one character at a time.

#include "frame/text_routines.h"

#include <string>
#include <vector>

#include "target.h"

namespace kwo::frame {
namespace {

Text NaiveTrim(Text text, bool leading) {
    while (!text.empty() && text.back() == u' ')
        text.pop_back();
    while (leading && !text.empty() && text.front() == u' ')
        text.erase(text.begin());
    return text;
}

bool StandsAt(TextView text, std::size_t at, TextView part) {
    if (at + part.size() > text.size()) return false;
    for (std::size_t i = 0; i < part.size(); ++i) {
        if (text[at + i] != part[i]) return false;
    }
    return true;
}

Text NaiveReplace(TextView text, TextView from, TextView to, bool onlyFirst, bool& found) {
    Text result;
    found = false;
    for (std::size_t at = 0; at < text.size();) {
        if (!from.empty() && !(onlyFirst && found) && StandsAt(text, at, from)) {
            found = true;
            result += to;
            at += from.size();
        } else {
            result += text[at++];
        }
    }
    return result;
}

Text NaiveInsert(TextView text, TextView value, TextView marker, bool quote) {
    if (text.empty() || marker.empty()) return {};
    Text shown;
    if (quote) shown += u'\'';
    shown += value;
    if (quote) shown += u'\'';
    bool found = false;
    const Text result = NaiveReplace(text, marker, shown, true, found);
    return found ? result : result + u" " + shown;
}

Text NaiveFill(const Text& text, const std::vector<Text>& values) {
    bool numbered = false;
    for (std::size_t at = 0; at < text.size(); ++at)
        numbered = numbered || StandsAt(text, at, u"%1");
    Text result = text;
    for (std::size_t at = 0; at < values.size(); ++at) {
        const std::string digits = "%" + std::to_string(at + 1);
        result = NaiveInsert(result, values[at], numbered ? Text(digits.begin(), digits.end()) : Text(u"|"), false);
    }
    return result;
}

KWO_FUZZ_TARGET(text_routines) {
    const Text text = input.Text();
    const Text from = input.Text();
    const Text to = input.Text();

    KWO_HOLDS(Trim(text) == NaiveTrim(text, true));
    KWO_HOLDS(TrimRight(text) == NaiveTrim(text, false));
    KWO_HOLDS(AsciiLower(AsciiUpper(text)) == AsciiLower(text));
    KWO_HOLDS(AsciiUpper(text).size() == text.size());
    KWO_HOLDS(KWO_CutAtNul(text) == Text(text.substr(0, text.find(u'\0'))));

    bool found = false;
    KWO_HOLDS(ReplaceAll(text, from, to) == NaiveReplace(text, from, to, false, found));
    for (const bool quote : {false, true})
        KWO_HOLDS(KWO_InsertValue(text, to, from, quote) == NaiveInsert(text, to, from, quote));

    std::vector<Text> values;
    for (int count = input.Below(13); count > 0; --count)
        values.push_back(input.Text());
    KWO_HOLDS(KWO_FillTemplate(text, values) == NaiveFill(text, values));

    const Text name = KWO_FileNamePart(text);
    KWO_HOLDS(text.find(name) != Text::npos);
    KWO_HOLDS(name.find(u'\\') == Text::npos);
    // A blank at the end of a name does not count.
    if (!Trim(name).empty()) KWO_HOLDS(KWO_FileNamePart(u"C:\\folder\\" + name) == TrimRight(name));

    const Text folder = KWO_AddSeparator(text, from);
    KWO_HOLDS(folder.starts_with(text));
    KWO_HOLDS(folder.size() == text.size() || folder == text + from);
    KWO_HOLDS(KWO_AddSeparator(folder, from) == folder);

    const auto number = input.Whole<std::int64_t>();
    const std::string digits = std::to_string(number);
    KWO_HOLDS(Decimal(number) == Text(digits.begin(), digits.end()));
    const auto word = input.Whole<std::int32_t>();
    KWO_HOLDS(KWO_LowWord(word) == (static_cast<std::int64_t>(word) % 65'536 + 65'536) % 65'536);
}

}  // namespace
}  // namespace kwo::frame
