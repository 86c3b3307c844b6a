#include "kwocheck/report.h"

#include <algorithm>
#include <string>

#include "kwocheck/words.h"

namespace kwocheck {

namespace {

constexpr TextView kLineEnd = u"\r\n";
constexpr std::size_t kNameWidth = 24;

Text Padded(Text text) {
    text.resize(std::max(text.size() + 1, kNameWidth), u' ');
    return text;
}

Text Row(const Text& name, const Text& what) {
    return u"  " + Padded(name) + what + Text(kLineEnd);
}

Text Described(const FileFacts& file) {
    if (file.state == FileFacts::State::kMissing) return u"does not exist";
    if (file.state == FileFacts::State::kDenied) return u"cannot be read";
    Text text = file.version.empty() ? u"no version" : file.version;
    text += u", " + (file.bitness ? Bits(*file.bitness) : Text(u"no DLL"));
    if (file.isBlocked) text += u", from the Internet";
    return text;
}

Text Described(const Registered& entry) {
    if (entry.isDenied) return u"registered " + For(entry.scope) + u", but you may not read it";
    return u"registered " + For(entry.scope) + u": " + entry.path + u" (" + Described(entry.file) + u")";
}

Text Described(const Creation& creation) {
    const Text code = u" (0x" + Hexadecimal(creation.code, 8) + u")";
    if (creation.result == Creation::Result::kNoName) return u"is not found by its name" + code;
    if (creation.result == Creation::Result::kNoObject) return u"cannot be created" + code;
    if (creation.result == Creation::Result::kNoAnswer) return u"was created, but does not answer" + code;
    return u"works";
}

/// Entries that do not count come in brackets.
template <class Entry>
Text Rows(Text name, const std::vector<Entry>& entries, bool isElevated, const Text& prefix = {}) {
    if (entries.empty()) return Row(name, prefix + u"not registered");
    Text rows;
    const Entry* const counting = Effective(entries, isElevated);
    for (const Entry& entry : entries) {
        const Text what = Described(entry);
        rows += Row(name, &entry == counting ? prefix + what : u"[also " + what + u"]");
        name.clear();
    }
    return rows;
}

Text RowsOf(const LibraryFacts& library, bool isElevated) {
    Text rows;
    for (const ClassFacts& one : library.classes) {
        const Text works = one.creation ? Described(*one.creation) + u"; " : Text();
        rows += Rows(one.known.ProgId(), one.entries, isElevated, works);
    }
    return rows + Rows(u"type library " + library.known.version, library.entries, isElevated);
}

Text RowOf(const MessageFileFacts& file) {
    Text state = u"no problems";
    if (file.state != FileFacts::State::kThere) {
        state = file.state == FileFacts::State::kMissing ? u"does not exist" : u"cannot be read";
    } else if (file.isRefused) {
        state = u"refused";
    } else if (!file.problems.empty()) {
        state = u"problems: " + Decimal(static_cast<std::int64_t>(file.problems.size()));
    }
    return Row(u"message file", file.path + u" (" + state + u")");
}

Text SectionOf(const View& view, const Surroundings& here) {
    Text section = Bits(view.bitness) + u" programs";
    if (view.bitness != here.own) section += u" (what the registry says; nothing was created)";
    section += kLineEnd;
    for (const LibraryFacts& library : view.libraries)
        section += RowsOf(library, here.isElevated);
    if (view.messageFile) section += RowOf(*view.messageFile);
    return section + Text(kLineEnd);
}

Text Paragraph(const Finding& finding) {
    Text text = finding.severity == Finding::Severity::kProblem ? u"Problem" : u"Remark";
    text += u" (" + Bits(finding.bitness) + u" programs): " + finding.what + Text(kLineEnd);
    if (!finding.classes.empty()) {
        text += u"  Classes:";
        for (const Text& name : finding.classes)
            text += u" " + name;
        text += kLineEnd;
    }
    return text + u"  Next step: " + finding.nextStep + Text(kLineEnd) + Text(kLineEnd);
}

Text Counted(std::ptrdiff_t count, TextView word) {
    return Decimal(count) + u" " + Text(word) + (count == 1 ? u"" : u"s");
}

}  // namespace

Text ReportOf(const Facts& facts, const std::vector<Finding>& findings) {
    const Surroundings& here = facts.here;
    Text report = u"kwocheck " + here.version + u", " + Bits(here.own) + u", on Windows " + here.windows + u" (" +
                  (here.isWindows64 ? u"64-bit" : u"32-bit") + u")" + (here.isElevated ? u", as administrator" : u"") +
                  Text(kLineEnd) + Text(kLineEnd);
    for (const View& view : facts.views)
        report += SectionOf(view, here);
    for (const auto severity : {Finding::Severity::kProblem, Finding::Severity::kRemark})
        for (const Finding& finding : findings)
            if (finding.severity == severity) report += Paragraph(finding);
    const auto problems = std::ranges::count(findings, Finding::Severity::kProblem, &Finding::severity);
    const auto remarks = static_cast<std::ptrdiff_t>(findings.size()) - problems;
    return report + Counted(problems, u"problem") + u", " + Counted(remarks, u"remark") + Text(kLineEnd);
}

Text ReportOf(const MessageFileFacts& file) {
    if (file.state != FileFacts::State::kThere) {
        return file.path +
               (file.state == FileFacts::State::kMissing ? u": there is no such file" : u": it cannot be read") +
               Text(kLineEnd);
    }
    Text report;
    for (const Text& problem : file.problems)
        report += problem + Text(kLineEnd);
    for (const Text& remark : file.remarks)
        report += u"Remark: " + remark + Text(kLineEnd);
    const auto problems = static_cast<std::ptrdiff_t>(file.problems.size());
    const auto remarks = static_cast<std::ptrdiff_t>(file.remarks.size());
    return report + Counted(problems, u"problem") + u", " + Counted(remarks, u"remark") + Text(kLineEnd);
}

ExitCode ExitCodeOf(const std::vector<Finding>& findings) {
    const auto isProblem = [](const Finding& one) { return one.severity == Finding::Severity::kProblem; };
    return std::ranges::any_of(findings, isProblem) ? ExitCode::kProblems : ExitCode::kGood;
}

ExitCode ExitCodeOf(const MessageFileFacts& file) {
    if (file.state != FileFacts::State::kThere) return ExitCode::kCannotCheck;
    return file.problems.empty() ? ExitCode::kGood : ExitCode::kProblems;
}

}  // namespace kwocheck
