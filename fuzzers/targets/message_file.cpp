// Whatever the bytes of a message file are, it is read or refused with a documented number; what is read can be looked
// up, and written down again it is read as the same.

#include <algorithm>
#include <string>

#include "kwoinit/message_errors.h"
#include "kwoinit/message_file.h"
#include "kwoinit/recorded_problems.h"
#include "platform/component_error.h"
#include "platform/simulated/text_codec.h"
#include "target.h"

namespace kwo::kwoinit {
namespace {

constexpr TextView kPrograms[] = {u"KWOUtil", u"office 2003", u"a", u""};
constexpr std::uint16_t kLanguages[] = {0, 0x0407, 0x0807, 0x0409, 0xFFFF};

/// A text as the author of a message file writes it.
std::string Escaped(TextView text) {
    const std::size_t first = text.find_first_not_of(u' ');
    const std::size_t last = text.find_last_not_of(u' ');
    Text line;
    for (std::size_t at = 0; at < text.size(); ++at) {
        const bool isOuterBlank = first == TextView::npos || at < first || at > last;
        if (isOuterBlank) {
            line += u"\\s";
        } else if (text.substr(at, 2) == u"\r\n") {
            line += u"\\n";
            ++at;
        } else if (text[at] == u'\\') {
            line += u"\\\\";
        } else {
            line += text[at];
        }
    }
    return platform::simulated::ToUtf8(line);
}

void LookUp(const MessageFile& file, TextView program, std::uint16_t language) {
    constexpr std::int32_t kLookedAt = 200;
    const auto extent = file.ExtentOf(program);
    const MessageFile::Texts texts = file.In(program, language);
    if (!extent) {
        for (const std::int32_t number : {-1, 0, 1, kHighestNumber})
            KWO_HOLDS(texts[number].empty());
        return;
    }
    KWO_HOLDS(extent->lowest >= 1 && extent->lowest <= extent->highest && extent->highest <= kHighestNumber);
    KWO_HOLDS(extent->highest - extent->lowest < MessageFile::kWidestTable);
    KWO_HOLDS(texts[extent->lowest - 1].empty() && texts[extent->highest + 1].empty());

    std::string written = "[KWOUtil]\n";
    bool any = false;
    const std::int32_t end = std::min(extent->highest, extent->lowest + kLookedAt);
    for (std::int32_t number = extent->lowest; number <= end; ++number) {
        const TextView text = texts[number];
        KWO_HOLDS(text.size() <= static_cast<std::size_t>(extent->characters));
        if (text.empty()) continue;
        any = true;
        written += std::to_string(number) + " = " + Escaped(text) + "\r\n";
    }
    if (!any) return;
    RecordedProblems problems;
    const MessageFile again(written, u"again", problems);
    KWO_HOLDS(problems.lines.empty());
    const MessageFile::Texts read = again.In(u"kwoutil", 0);
    for (std::int32_t number = extent->lowest; number <= end; ++number)
        KWO_HOLDS(read[number] == texts[number]);
}

KWO_FUZZ_TARGET(message_file) {
    const std::string_view bytes = input.Rest();
    RecordedProblems problems;
    try {
        const MessageFile file(bytes, u"f", problems);
        for (const TextView program : kPrograms) {
            for (const std::uint16_t language : kLanguages)
                LookUp(file, program, language);
        }
    } catch (const platform::ComponentError& error) {
        KWO_HOLDS(error.number >= NumberOf(MessageError::FileTooLarge));
        KWO_HOLDS(error.number <= NumberOf(MessageError::TooManyEntries));
        KWO_HOLDS(!error.source.empty() && !error.description.empty());
    }
    KWO_HOLDS(problems.lines.size() <= MessageFile::kMostProblems + 1);
    for (const std::string& line : problems.lines)
        KWO_HOLDS(line.starts_with("f(") || line.starts_with("f: ") || line.starts_with("The message file f "));
}

}  // namespace
}  // namespace kwo::kwoinit
