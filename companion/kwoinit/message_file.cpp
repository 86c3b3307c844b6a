#include "kwoinit/message_file.h"

#include <algorithm>
#include <map>
#include <string>
#include <tuple>
#include <utility>

#include "kwoinit/message_errors.h"
#include "platform/utf8.h"

namespace kwo::kwoinit {

namespace {

constexpr TextView kSource = u"KWOInitialize.KWO_MsgTableSize";
constexpr TextView kFallbackProgram = u"KWOUtil";
constexpr std::uint16_t kPrimaryLanguage = 0x3FF;
constexpr std::uint16_t kDefaultSublanguage = 0x400;

[[noreturn]] void Refuse(MessageError error, TextView name, TextView reason) {
    Raise(error, kSource, Text(u"The message file ") + Text(name) + u" cannot be used: " + Text(reason));
}

/// Makes upper and lower case the same for Latin, Greek and Cyrillic letters.
char16_t Fold(char16_t c) {
    struct Range {
        char16_t first, last;
        std::int16_t distance;
        int step = 1;  ///< 2 where capitals and small letters alternate
    };
    constexpr Range kCapitals[] = {
        {u'A', u'Z', 0x20},     {0x00C0, 0x00D6, 0x20}, {0x00D8, 0x00DE, 0x20}, {0x0100, 0x012E, 1, 2},
        {0x0132, 0x0136, 1, 2}, {0x0139, 0x0147, 1, 2}, {0x014A, 0x0176, 1, 2}, {0x0178, 0x0178, -0x79},
        {0x0179, 0x017D, 1, 2}, {0x0386, 0x0386, 0x26}, {0x0388, 0x038A, 0x25}, {0x038C, 0x038C, 0x40},
        {0x038E, 0x038F, 0x3F}, {0x0391, 0x03AB, 0x20}, {0x0400, 0x040F, 0x50}, {0x0410, 0x042F, 0x20},
    };
    for (const Range& range : kCapitals) {
        if (c >= range.first && c <= range.last && (c - range.first) % range.step == 0) {
            return static_cast<char16_t>(c + range.distance);
        }
    }
    return c;
}

Text Folded(TextView text) {
    Text folded(text);
    std::ranges::transform(folded, folded.begin(), Fold);
    return folded;
}

Text Decimal(std::size_t number) {
    const std::string digits = std::to_string(number);
    return {digits.begin(), digits.end()};
}

std::string_view TextBytes(std::string_view bytes, TextView name) {
    if (bytes.size() > MessageFile::kLargestFile) Refuse(MessageError::FileTooLarge, name, u"it is larger than 64 MiB");
    if (bytes.starts_with("\xFF\xFE") || bytes.starts_with("\xFE\xFF")) {
        Refuse(MessageError::NotText, name, u"it is UTF-16 text, but must be UTF-8");
    }
    if (bytes.find('\0') != std::string_view::npos) {
        Refuse(MessageError::NotText, name, u"it holds zero bytes, so it is no UTF-8 text");
    }
    if (bytes.starts_with("\xEF\xBB\xBF")) bytes.remove_prefix(3);
    return bytes;
}

bool HasControls(TextView text) {
    return std::ranges::any_of(text, [](char16_t c) { return (c < 0x20 && c != u'\t') || c == 0x7F; });
}

/// Whether a bad line counts as a damaged header: it has a bracket before any equals sign and begins neither like a
/// comment nor like a text. Characters other than plain ones may stand in front.
bool LooksLikeHeader(std::string_view line) {
    const auto isPlain = [](char c) { return c > ' ' && c < 0x7F; };
    const auto first = std::ranges::find_if(line, isPlain);
    if (first == line.end() || *first == ';' || (*first >= '0' && *first <= '9')) return false;
    const auto telling = std::find_if(first, line.end(), [](char c) { return c == '[' || c == ']' || c == '='; });
    return telling != line.end() && *telling != '=';
}

}  // namespace

/// Reads a file line by line into sections and messages.
class MessageFile::Reader {
public:
    Reader(MessageFile& file, TextView name) : mFile(file), mName(name) {}

    void Read(std::string_view bytes) {
        for (std::uint32_t number = 1; !bytes.empty(); ++number) {
            const std::size_t end = bytes.find('\n');
            std::string_view line = bytes.substr(0, end);
            bytes.remove_prefix(end == std::string_view::npos ? bytes.size() : end + 1);
            if (line.ends_with('\r')) line.remove_suffix(1);
            if (line.size() > kLongestLineBytes) {
                Refuse(MessageError::LineTooLong, mName, u"line " + Decimal(number) + u" is longer than 1 MiB");
            }
            ReadLine(line, number);
        }
        Sort();
    }

    void Report(ProblemReport& report) {
        std::ranges::stable_sort(mProblems, {}, &Problem::line);
        for (const Problem& problem : mProblems) {
            report.Problem(Text(mName) + u"(" + Decimal(problem.line) + u"): " + Text(problem.reason));
        }
        const std::size_t more = mProblemCount - mProblems.size();
        if (more != 0) report.Problem(Text(mName) + u": lines with problems that are not listed: " + Decimal(more));
    }

private:
    struct Problem {
        std::uint32_t line;
        TextView reason;
    };
    struct Numbers {
        std::int32_t lowest;
        std::int32_t highest;
    };

    void ReadLine(std::string_view bytes, std::uint32_t number) {
        if (bytes.empty()) return;
        Line line = LineOf(bytes);
        if (const auto* const bad = std::get_if<BadLine>(&line)) {
            // The texts after a damaged header belong to no section.
            if (LooksLikeHeader(bytes)) mSection.reset();
            Skip(number, bad->reason);
        } else if (const auto* const section = std::get_if<SectionLine>(&line)) {
            Begin(*section);
        } else if (auto* const message = std::get_if<TextLine>(&line)) {
            Add(std::move(*message), number);
        }
    }

    Line LineOf(std::string_view bytes) {
        if (!platform::FromUtf8(bytes, mText)) return BadLine{u"it is not well-formed UTF-8"};
        if (mText.size() > kLongestLine) return BadLine{u"it is longer than 65536 characters"};
        if (HasControls(mText)) return BadLine{u"it holds control characters"};
        return ParseLine(mText);
    }

    void Skip(std::uint32_t line, TextView reason) {
        ++mProblemCount;
        if (mProblems.size() < kMostProblems) mProblems.push_back({line, reason});
    }

    void Begin(const SectionLine& header) {
        const auto [found, isNew] = mKnown.try_emplace({Folded(header.program), header.language},
                                                       static_cast<std::uint32_t>(mFile.mSections.size()));
        mSection = found->second;
        if (!isNew) return;
        if (mFile.mSections.size() == kMostSections) {
            Refuse(MessageError::TooManyEntries, mName, u"it has more than 10000 sections");
        }
        mFile.mSections.push_back({found->first.first, header.language});
    }

    void Add(TextLine message, std::uint32_t line) {
        if (!mSection) return Skip(line, u"it stands in no section");
        const std::int32_t number = message.number;
        auto& [lowest, highest] =
            mNumbers.try_emplace(mFile.mSections[*mSection].program, Numbers{number, number}).first->second;
        const std::int32_t newLowest = std::min(lowest, number);
        const std::int32_t newHighest = std::max(highest, number);
        if (newHighest - newLowest >= kWidestTable) {
            return Skip(line, u"the number is more than a table of 1000000 away from the program's others");
        }
        lowest = newLowest;
        highest = newHighest;
        if (mFile.mMessages.size() == kMostTexts) {
            Refuse(MessageError::TooManyEntries, mName, u"it has more than 1000000 texts");
        }
        mFile.mMessages.push_back({*mSection, number, line, std::move(message.text)});
    }

    /// If a number has several texts, the first one stays.
    void Sort() {
        auto& messages = mFile.mMessages;
        const auto place = [](const Message& message) { return std::pair(message.section, message.number); };
        std::ranges::sort(messages, {}, [](const Message& message) {
            return std::tuple(message.section, message.number, message.line);
        });
        std::pair<std::uint32_t, std::int32_t> previous{};
        std::erase_if(messages, [&](const Message& message) {
            const bool again = place(message) == std::exchange(previous, place(message));
            if (again) Skip(message.line, u"its section has a text for this number already");
            return again;
        });
    }

    MessageFile& mFile;
    TextView mName;
    Text mText;  ///< of the line that is read
    std::optional<std::uint32_t> mSection;
    std::map<std::pair<Text, std::uint16_t>, std::uint32_t> mKnown;
    std::map<Text, Numbers> mNumbers;
    std::vector<Problem> mProblems;
    std::size_t mProblemCount = 0;
};

MessageFile::MessageFile(std::string_view bytes, TextView name, ProblemReport& report) {
    Reader reader(*this, name);
    try {
        reader.Read(TextBytes(bytes, name));
    } catch (const platform::ComponentError& refusal) {
        reader.Report(report);
        report.Problem(refusal.description);
        throw;
    }
    reader.Report(report);
}

std::vector<std::uint32_t> MessageFile::SectionsOf(TextView program) const {
    std::vector<std::uint32_t> sections;
    for (const Text& name : {Folded(program), Folded(kFallbackProgram)}) {
        for (std::uint32_t at = 0; at < mSections.size(); ++at) {
            if (mSections[at].program == name && HasTexts(at)) sections.push_back(at);
        }
        if (!sections.empty()) break;
    }
    return sections;
}

bool MessageFile::HasTexts(std::uint32_t section) const {
    return std::ranges::binary_search(mMessages, section, {}, &Message::section);
}

TextView MessageFile::Find(std::uint32_t section, std::int32_t number) const {
    const auto place = [](const Message& message) { return std::pair(message.section, message.number); };
    const auto found = std::ranges::lower_bound(mMessages, std::pair(section, number), {}, place);
    return found != mMessages.end() && place(*found) == std::pair(section, number) ? TextView(found->text) : TextView();
}

std::optional<MessageFile::Extent> MessageFile::ExtentOf(TextView program) const {
    Extent extent;
    for (const std::uint32_t section : SectionsOf(program)) {
        const auto first = std::ranges::lower_bound(mMessages, section, {}, &Message::section);
        const auto last = std::ranges::upper_bound(mMessages, section, {}, &Message::section);
        const std::int32_t lowest = first->number;
        extent.lowest = extent.lowest == 0 ? lowest : std::min(extent.lowest, lowest);
        extent.highest = std::max(extent.highest, std::prev(last)->number);
        for (auto message = first; message != last; ++message)
            extent.characters += static_cast<std::int32_t>(message->text.size());
    }
    if (extent.highest == 0) return std::nullopt;
    return extent;
}

std::vector<MessageFile::Entry> MessageFile::Entries() const {
    std::vector<Entry> entries;
    entries.reserve(mMessages.size());
    for (const Message& message : mMessages) {
        const Section& section = mSections[message.section];
        entries.push_back({section.program, section.language, message.number, message.line, message.text});
    }
    return entries;
}

MessageFile::Texts MessageFile::In(TextView program, std::uint16_t language) const {
    std::vector<std::uint32_t> sections = SectionsOf(program);
    const auto primary = static_cast<std::uint16_t>(language & kPrimaryLanguage);
    const auto rank = [&](std::uint32_t section) {
        const std::uint16_t its = mSections[section].language;
        int group = 3;
        if (its == language)
            group = 0;
        else if (its == primary)
            group = 1;
        else if (its == (kDefaultSublanguage | primary))
            group = 2;
        return std::pair(its == 0 ? 4 : group, section);
    };
    std::erase_if(sections, [&](std::uint32_t section) {
        const std::uint16_t its = mSections[section].language;
        return its != 0 && (its & kPrimaryLanguage) != primary;
    });
    std::ranges::sort(sections, {}, rank);
    return {*this, std::move(sections)};
}

TextView MessageFile::Texts::operator[](std::int32_t number) const {
    for (const std::uint32_t section : mSections) {
        const TextView text = mFile.Find(section, number);
        if (!text.empty()) return text;
    }
    return {};
}

}  // namespace kwo::kwoinit
