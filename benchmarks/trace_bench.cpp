#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <spdlog/pattern_formatter.h>
#include <spdlog/sinks/basic_file_sink.h>
#include <spdlog/spdlog.h>
#include <unistd.h>

#include <chrono>
#include <ctime>
#include <filesystem>
#include <memory>
#include <string>

#include "component/component.h"
#include "platform/simulated/simulated_desktop.h"
#include "platform/simulated/text_codec.h"

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
    std::optional<std::int64_t> LocalFileTimeToUtc(std::int64_t) override { return std::nullopt; }

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

/// The simulated conversions without what counts and fails their calls for tests.
class MachineConversions final : public platform::Conversions {
public:
    explicit MachineConversions(platform::Conversions& others) : mOthers(others) {}
    std::int16_t ToInt16(const platform::Variant& value) override { return mOthers.ToInt16(value); }
    std::int32_t ToInt32(const platform::Variant& value) override { return mOthers.ToInt32(value); }
    std::int32_t To32Bits(const platform::Variant& value) override { return mOthers.To32Bits(value); }
    float ToSingle(const platform::Variant& value) override { return mOthers.ToSingle(value); }
    double ToDouble(const platform::Variant& value) override { return mOthers.ToDouble(value); }
    bool ToBoolean(const platform::Variant& value) override { return mOthers.ToBoolean(value); }
    platform::Date ToDate(const platform::Variant& value) override { return mOthers.ToDate(value); }
    Text ToText(const platform::Variant& value) override { return mOthers.ToText(value); }
    std::optional<platform::Date> ParseDate(TextView text) override { return mOthers.ParseDate(text); }
    Text FormatNumber(double value, TextView pattern) override { return mOthers.FormatNumber(value, pattern); }
    Text FormatDate(platform::Date value, TextView pattern) override { return mOthers.FormatDate(value, pattern); }
    char16_t ToUpper(char16_t character) override { return mOthers.ToUpper(character); }
    Text FromAnsi(std::string_view bytes) override { return mOthers.FromAnsi(bytes); }
    std::string ToAnsi(TextView text) override { return platform::simulated::ToAnsi(text); }

private:
    platform::Conversions& mOthers;
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
    MachineConversions conversions{desktop.conversions};
    MachineFiles files{Folder() / "trace.log"};
    component::Component component{Services()};
    CallTrace* trace = &component.trace;

    platform::Platform Services() {
        struct OfThisMachine : platform::Platform {
            platform::Clock& clock;
            platform::Conversions& conversions;
            platform::LogFiles& logFiles;
        };
        OfThisMachine services{desktop.Services(), clock, conversions, files};
        return ServicesOf(services);
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
    // Time of day, milliseconds since the line before, text, and as many characters as the trace has.
    spdlog::logger logger("peer", std::make_shared<spdlog::sinks::basic_file_sink_st>(Folder() / "peer.log", true));
    logger.set_formatter(
        std::make_unique<spdlog::pattern_formatter>("%H:%M:%S %3o.00  %v", spdlog::pattern_time_type::local, "\r\n"));
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
