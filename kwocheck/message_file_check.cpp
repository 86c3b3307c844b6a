#include "kwocheck/message_file_check.h"

#include <algorithm>
#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <utility>

#include "kwocheck/words.h"
#include "kwoinit/message_file.h"
#include "platform/component_error.h"

namespace kwocheck {

namespace {

using kwo::kwoinit::MessageFile;

/// Keeps the problems that the companion's reader reports.
class ProblemList final : public kwo::kwoinit::ProblemReport {
public:
    explicit ProblemList(std::vector<Text>& lines) : mLines(lines) {}
    void Problem(TextView text) override { mLines.emplace_back(text); }

private:
    std::vector<Text>& mLines;
};

/// The texts of one section by their numbers.
using Texts = std::map<std::int32_t, const MessageFile::Entry*>;
/// Sections by program and language; 0 is the one without a language.
using Sections = std::map<std::pair<Text, std::uint16_t>, Texts>;

Sections SectionsOf(const std::vector<MessageFile::Entry>& entries) {
    Sections sections;
    for (const MessageFile::Entry& entry : entries)
        sections[{Text(entry.program), entry.language}][entry.number] = &entry;
    return sections;
}

std::set<char16_t> MarkersOf(TextView text) {
    std::set<char16_t> markers;
    for (std::size_t at = text.find(u'%'); at != TextView::npos; at = text.find(u'%', at + 1)) {
        const TextView digit = text.substr(at + 1, 1);
        if (!digit.empty() && digit[0] >= u'1' && digit[0] <= u'9') markers.insert(digit[0]);
    }
    return markers;
}

Text Listed(const std::set<char16_t>& markers) {
    Text list;
    for (const char16_t digit : markers)
        list += (list.empty() ? Text(u"%") : Text(u" %")) + digit;
    return list.empty() ? u"no marker" : list;
}

/// Compares a translation with the texts without a language.
void Compare(const Texts& translation, const Texts& originals, Text name, MessageFileFacts& facts) {
    Text missing;
    for (const auto& [number, original] : originals) {
        const auto found = translation.find(number);
        if (found == translation.end()) {
            missing += (missing.empty() ? u"" : u", ") + Decimal(number);
            continue;
        }
        const MessageFile::Entry& entry = *found->second;
        const auto has = MarkersOf(entry.text);
        const auto needs = MarkersOf(original->text);
        if (has == needs) continue;
        facts.problems.push_back(facts.path + u"(" + Decimal(entry.line) + u"): the text has " + Listed(has) +
                                 u", the one without a language has " + Listed(needs));
    }
    if (!missing.empty()) facts.remarks.push_back(facts.path + u": " + name + u" has no text for " + missing);
}

void CompareTranslations(const Sections& sections, MessageFileFacts& facts) {
    for (const auto& [key, texts] : sections) {
        const auto& [program, language] = key;
        const auto originals = sections.find({program, 0});
        if (language == 0 || originals == sections.end()) continue;
        Compare(texts, originals->second, u"[" + program + u" " + Hexadecimal(language, 4) + u"]", facts);
    }
}

}  // namespace

MessageFileFacts CheckMessageFile(System& system, const Text& path) {
    std::string bytes;
    const FileFacts::State state = system.Read(path, MessageFile::kLargestFile + 1, bytes);
    if (state == FileFacts::State::kThere) return CheckMessages(bytes, path);
    MessageFileFacts facts;
    facts.path = path;
    facts.state = state;
    return facts;
}

MessageFileFacts CheckMessages(std::string_view bytes, const Text& path) {
    MessageFileFacts facts;
    facts.path = path;
    facts.state = FileFacts::State::kThere;
    ProblemList problems(facts.problems);
    try {
        const MessageFile file(bytes, path, problems);
        CompareTranslations(SectionsOf(file.Entries()), facts);
    } catch (const kwo::platform::ComponentError&) {
        facts.isRefused = true;
    }
    return facts;
}

}  // namespace kwocheck
