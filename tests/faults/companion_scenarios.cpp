#include <array>
#include <optional>

#include "kwoinit/message_file.h"
#include "scenario.h"

namespace kwo::fault_tests {

namespace {

using kwoinit::MessageFile;

/// A file with sections, languages, and lines that are skipped.
constexpr std::string_view kFile =
    "[Some Program With A Long Name]\r\n1=a text that is longer than a few characters\r\n2=\"another text\\n\"\r\n"
    "no text at all\r\n[Some Program With A Long Name 0407]\r\n1=ein Text, der nicht kurz ist\r\n2=zwei\r\n2=drei\r\n"
    "[KWOUtil]\r\n5=a text of the component for any program\r\n[damaged\r\n9=nowhere\r\n";
constexpr TextView kProgram = u"some program with a long name";

/// Keeps what is reported; the companion's own report goes to a debugger.
class Problems final : public kwoinit::ProblemReport {
public:
    explicit Problems(platform::DebugOutput& debugger) : mDebugger(debugger) {}
    void Problem(TextView text) override { mDebugger.Write(text); }

private:
    platform::DebugOutput& mDebugger;
};

struct CompanionStage : Stage {
    void Read(std::string_view bytes) {
        Problems problems(desktop.debugOutput);
        file.reset();
        file.emplace(bytes, u"C:\\Program Files\\Host\\KWOInit.nls", problems);
    }
    std::string State() override { return file ? "a file" : "no file"; }
    void Release() override { file.reset(); }

    std::optional<MessageFile> file;
};

std::string Told(const std::optional<MessageFile::Extent>& extent) {
    if (!extent) return "nothing";
    return std::to_string(extent->lowest) + " to " + std::to_string(extent->highest);
}

}  // namespace

std::vector<Scenario> CompanionScenarios() {
    return {
        {"AMessageFileIsRead",
         {"KWOInitialize.KWO_MsgTableSize"},
         Fresh<CompanionStage>(),
         On<CompanionStage>([](CompanionStage& stage) {
             return Told(Member([&] {
                 stage.Read(kFile);
                 return stage.file->ExtentOf(kProgram);
             }));
         }),
         {{"OutputDebugString", {}, IsOutOfMemory("no file")}},
         // Sorting the problems does without the memory that would make it faster.
         Either(Unnoticed(), Either(IsOutOfMemory("no file"), IsOutOfMemory("a file")))},
        {"AMessageFileIsRefused",
         {"KWOInitialize.KWO_MsgTableSize"},
         Fresh<CompanionStage>(),
         On<CompanionStage>([](CompanionStage& stage) {
             Member([&] { stage.Read(std::string_view("[KWOUtil]\n1=a\0b", 15)); });
             return "read";
         }),
         {{"OutputDebugString", {}, IsOutOfMemory("no file")}}},
        {"AMessageTableIsFilled",
         {"KWOInitialize.KWO_MsgTableLoad"},
         Prepared<CompanionStage>([](CompanionStage& stage) { stage.Read(kFile); }),
         On<CompanionStage>([](CompanionStage& stage) {
             const auto texts = Member([&] {
                 const MessageFile::Texts found = stage.file->In(kProgram, 0x407);
                 return std::array{found[1], found[2], found[3]};
             });
             return Shown(texts[0]) + ", " + Shown(texts[1]) + ", " + Shown(texts[2]);
         }),
         {}},
    };
}

}  // namespace kwo::fault_tests
