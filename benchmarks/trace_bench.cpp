#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <spdlog/sinks/basic_file_sink.h>
#include <spdlog/spdlog.h>
#include <unistd.h>

#include <chrono>
#include <ctime>
#include <filesystem>
#include <memory>
#include <string>

#include "frame/component.h"
#include "platform/simulated/simulated_desktop.h"

namespace kwo::frame {
namespace {

constexpr TextView kRoutine = u"KWOTimer.AddAlarm";
constexpr TextView kText = u"Alarm 17 is due in 2500 milliseconds and fires every day";
const std::string kNarrowText(kText.begin(), kText.end());

/// The time of this machine.
class MachineClock final : public platform::Clock {
public:
    MachineClock() {
        const std::time_t now = std::time(nullptr);
        std::tm local = {};
        localtime_r(&now, &local);
        mOffset = local.tm_gmtoff;
    }
    std::optional<std::int64_t> CounterFrequency() override { return 1'000'000'000; }
    std::int64_t Counter() override { return std::chrono::steady_clock::now().time_since_epoch().count(); }
    std::uint32_t TickCount() override { return 0; }
    platform::Date Now() override {
        constexpr double kFirstDay = 25569;  // 1970-01-01
        const std::chrono::duration<double> now = std::chrono::system_clock::now().time_since_epoch();
        return {kFirstDay + (now.count() + static_cast<double>(mOffset)) / 86'400};
    }

private:
    std::int64_t mOffset = 0;
};

/// Files of this machine in a folder of their own, all under one name.
class MachineFiles final : public platform::LogFiles {
public:
    explicit MachineFiles(std::filesystem::path path) : mPath(std::move(path)) {}
    File CreateNew(TextView) override {
        const int file = ::open(mPath.c_str(), O_CREAT | O_TRUNC | O_WRONLY | O_CLOEXEC, 0600);
        return file < 0 ? 0 : static_cast<File>(file);
    }
    bool Write(File file, std::string_view bytes) override {
        return ::write(static_cast<int>(file), bytes.data(), bytes.size()) == static_cast<ssize_t>(bytes.size());
    }
    void Close(File file) override { ::close(static_cast<int>(file)); }
    bool Delete(TextView) override { return std::filesystem::remove(mPath); }

private:
    std::filesystem::path mPath;
};

/// A folder on the disk, gone at the end of the program.
const std::filesystem::path& Folder() {
    struct Temporary {
        std::filesystem::path path =
            std::filesystem::temp_directory_path() / ("kwoutil-trace-bench-" + std::to_string(::getpid()));
        Temporary() { std::filesystem::create_directory(path); }
        ~Temporary() { std::filesystem::remove_all(path); }
    };
    static const Temporary folder;
    return folder.path;
}

/// A component with the clock and the files of this machine.
struct Traced {
    platform::simulated::SimulatedDesktop desktop;
    MachineClock clock;
    MachineFiles files{Folder() / "trace.log"};
    Component component{Services()};
    CallTrace* trace = &component.trace;

    platform::Platform Services() {
        const platform::Platform simulated = desktop.Services();
        return {clock,
                simulated.conversions,
                simulated.debugOutput,
                simulated.desktop,
                simulated.eventLog,
                simulated.files,
                simulated.host,
                files,
                simulated.messages,
                simulated.processMemory,
                simulated.registry,
                simulated.screen,
                simulated.errors};
    }
};

void PushAndPopOff(benchmark::State& state) {
    Traced traced;
    benchmark::DoNotOptimize(traced.trace);
    for (auto _ : state) {
        benchmark::DoNotOptimize(traced.trace->KWO_RoutinePush(kRoutine));
        traced.trace->KWO_RoutinePop();
    }
}
BENCHMARK(PushAndPopOff);

void PushAndPopWithoutFile(benchmark::State& state) {
    Traced traced;
    traced.component.trace.KWO_TraceStart(0, 0, false);
    traced.component.trace.KWO_TraceClose(false);
    for (auto _ : state) {
        benchmark::DoNotOptimize(traced.trace->KWO_RoutinePush(kRoutine));
        traced.trace->KWO_RoutinePop();
    }
}
BENCHMARK(PushAndPopWithoutFile);

void LineToRing(benchmark::State& state) {
    Traced traced;
    traced.component.trace.KWO_TraceStart(0, 1000, false);
    for (auto _ : state)
        traced.trace->KWO_TraceWrite(kText, true, true);
}
BENCHMARK(LineToRing);

void LineToFile(benchmark::State& state) {
    Traced traced;
    traced.component.trace.KWO_TraceStart(0, 0, false);
    for (auto _ : state)
        traced.trace->KWO_TraceWrite(kText, true, true);
}
BENCHMARK(LineToFile);

void SpdlogLineToFileFlushed(benchmark::State& state) {
    // Time of day, milliseconds since the line before, text.
    spdlog::logger logger("peer", std::make_shared<spdlog::sinks::basic_file_sink_st>(Folder() / "peer.log", true));
    logger.set_pattern("%H:%M:%S %o  %v");
    logger.flush_on(spdlog::level::info);
    for (auto _ : state)
        logger.info(kNarrowText);
}
BENCHMARK(SpdlogLineToFileFlushed);

void PushAndPopToFile(benchmark::State& state) {
    Traced traced;
    traced.component.trace.KWO_TraceStart(0, 0, false);
    for (auto _ : state) {
        benchmark::DoNotOptimize(traced.trace->KWO_RoutinePush(kRoutine));
        traced.trace->KWO_RoutinePop();
    }
}
BENCHMARK(PushAndPopToFile);

}  // namespace
}  // namespace kwo::frame
