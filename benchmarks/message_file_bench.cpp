// The time that the companion needs for files of the largest size that it reads; a host waits for it.

#include <benchmark/benchmark.h>

#include <string>
#include <string_view>

#include "kwoinit/message_file.h"
#include "platform/component_error.h"

namespace kwo::kwoinit {
namespace {

/// Nobody listens.
class NoReport final : public ProblemReport {
public:
    void Problem(TextView) override {}
};

/// The file of the largest size that repeats `lines`, behind a section header.
std::string LargestFileOf(std::string_view lines) {
    std::string bytes = "[KWOUtil]\n";
    bytes.reserve(MessageFile::kLargestFile);
    while (bytes.size() + lines.size() <= MessageFile::kLargestFile)
        bytes += lines;
    return bytes;
}

void Read(benchmark::State& state, const std::string& bytes) {
    NoReport report;
    for ([[maybe_unused]] const auto _ : state) {
        try {
            const MessageFile file(bytes, u"KWOInit.nls", report);
            benchmark::DoNotOptimize(&file);
        } catch (const platform::ComponentError&) {
            // Refused, as it may be.
        }
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(bytes.size()) * state.iterations());
}

struct Kind {
    const char* name;
    std::string lines;
};

const Kind kKinds[] = {
    {"empty lines", "\n"},
    {"one letter", "x\n"},
    {"one byte that is no UTF-8", "\xFF\n"},
    {"one control character", "\x01\n"},
    {"one bracket", "[\n"},
    {"damaged headers", "[KWOUtil\x01 0407]\n"},
    {"one header again and again", "[a]\n"},
    {"a number without a text", "1=\n"},
    {"a number out of range", "0=x\n"},
    {"an unknown escape", "1=\\q\n"},
    {"sentences in an ANSI code page",
     "1900 = In der Anwendung ist ein Fehler aufgetreten, \xFC"
     "ber den nichts bekannt ist.\n"},
    {"sentences without a number", "An internal application error has occurred, says the log.\n"},
    {"lines of 65,537 characters", std::string(65'537, 'x') + "\n"},
    {"lines of 1 MiB", std::string(1 << 20, 'x') + "\n"},
    {"lines of 1 MiB of wide characters",
     [] {
         std::string line;
         while (line.size() + 3 <= 1 << 20)
             line += "\xE4\xB8\xAD";
         return line + "\n";
     }()},
    {"text after text for one number", "1=x\n"},
};

}  // namespace
}  // namespace kwo::kwoinit

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    for (const auto& kind : kwo::kwoinit::kKinds) {
        benchmark::RegisterBenchmark(
            kind.name,
            [&kind](benchmark::State& state) { kwo::kwoinit::Read(state, kwo::kwoinit::LargestFileOf(kind.lines)); })
            ->Unit(benchmark::kMillisecond)
            ->Iterations(2);
    }
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
