#include "flatness.h"

#include <algorithm>
#include <cstdio>
#include <functional>

namespace kwo::soak {
namespace {

struct Measure {
    const char* name;
    long long bound;
    std::function<long long(const Census&)> value;
};

const std::vector<Measure>& Measures() {
    static const std::vector<Measure> measures = {
        {"handles", 3, [](const Census& census) { return census.handles; }},
        {"GDI objects", 3, [](const Census& census) { return census.gdiObjects; }},
        {"user objects", 2, [](const Census& census) { return census.userObjects; }},
        {"private bytes", 500'000, [](const Census& census) { return census.privateBytes; }},
        {"heap bytes", 3'000, [](const Census& census) { return census.heapBytes; }},
        {"live objects", 0, [](const Census& census) { return census.liveObjects; }},
    };
    return measures;
}

std::vector<long long> LowestOfEachPart(const std::vector<Census>& series, const Measure& measure) {
    std::vector<long long> lows;
    for (std::size_t part = 0; part < Flatness::kParts; ++part) {
        const std::size_t end = series.size() * (part + 1) / Flatness::kParts;
        std::size_t at = series.size() * part / Flatness::kParts;
        long long low = measure.value(series[at]);
        while (++at < end)
            low = std::min(low, measure.value(series[at]));
        lows.push_back(low);
    }
    return lows;
}

/// What the values grow by from the first to the last, if each step is taken for the one in the middle of all steps.
long long SteadyGrowth(const std::vector<long long>& values) {
    std::vector<long long> steps;
    for (std::size_t at = 1; at < values.size(); ++at)
        steps.push_back(values[at] - values[at - 1]);
    std::ranges::sort(steps);
    const std::size_t half = steps.size() / 2;
    // Of eight steps, the two in the middle.
    return (steps[half - 1] + steps[half]) * static_cast<long long>(half);
}

}  // namespace

std::vector<std::string> Flatness::Growing(std::vector<std::string>& table) const {
    std::vector<std::string> growing;
    for (const Measure& measure : Measures()) {
        const std::vector<long long> lows = LowestOfEachPart(mSeries, measure);
        const long long growth = SteadyGrowth(lows);
        char line[160];
        std::snprintf(line, sizeof line, "%-14s %12lld -> %12lld  grows steadily by %8lld, at most %8lld", measure.name,
                      lows.front(), lows.back(), growth, measure.bound);
        table.emplace_back(line);
        if (growth > measure.bound) growing.emplace_back(line);
    }
    return growing;
}

}  // namespace kwo::soak
