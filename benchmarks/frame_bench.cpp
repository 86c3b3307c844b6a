#include <benchmark/benchmark.h>

#include <array>

#include "frame/millisecond_clock.h"
#include "frame/text_routines.h"

namespace kwo::frame {
namespace {

/// Sources of time that cost next to nothing, so that what is measured is the arithmetic.
class CountingClock final : public platform::Clock {
public:
    explicit CountingClock(std::optional<std::int64_t> frequency) : mFrequency(frequency) {}
    std::optional<std::int64_t> CounterFrequency() override { return mFrequency; }
    std::int64_t Counter() override { return mCount += 12'345; }
    std::uint32_t TickCount() override { return static_cast<std::uint32_t>(++mCount); }
    platform::Date Now() override { return {}; }
    std::optional<std::int64_t> LocalFileTimeToUtc(std::int64_t) override { return std::nullopt; }

private:
    std::optional<std::int64_t> mFrequency;
    std::int64_t mCount = 1'000'000'000'000;
};

const std::array<Text, 3> kValues = {u"-2147191504", u"Type mismatch", u"KWOTimer.AddAlarm"};

void FillNumberedTemplate(benchmark::State& state) {
    for (auto _ : state)
        benchmark::DoNotOptimize(KWO_FillTemplate(u"Attached error #%1: %2; Source=%3", kValues));
}
BENCHMARK(FillNumberedTemplate);

void FillBarTemplate(benchmark::State& state) {
    for (auto _ : state)
        benchmark::DoNotOptimize(KWO_FillTemplate(u"Raising error #|: |; Source=|", kValues));
}
BENCHMARK(FillBarTemplate);

void TimerMsFromCounter(benchmark::State& state) {
    CountingClock source(10'000'000);
    MillisecondClock clock(source);
    for (auto _ : state)
        benchmark::DoNotOptimize(clock.KWO_TimerMs());
}
BENCHMARK(TimerMsFromCounter);

void TimerMsFromTicks(benchmark::State& state) {
    CountingClock source(std::nullopt);
    MillisecondClock clock(source);
    for (auto _ : state)
        benchmark::DoNotOptimize(clock.KWO_TimerMs());
}
BENCHMARK(TimerMsFromTicks);

}  // namespace
}  // namespace kwo::frame
