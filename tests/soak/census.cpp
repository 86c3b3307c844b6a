#include "census.h"

#include <windows.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <functional>
#include <string_view>

#include "live_objects.h"
#include "process_resources.h"
#include "support/gdi_objects.h"
#include "wine.h"

namespace kwo::soak {
namespace {

/// The windows of this process below `parent`, or all top-level ones.
long WindowsBelow(HWND parent) {
    long count = 0;
    for (HWND window = FindWindowExW(parent, nullptr, nullptr, nullptr); window != nullptr;
         window = FindWindowExW(parent, window, nullptr, nullptr)) {
        DWORD process = 0;
        GetWindowThreadProcessId(window, &process);
        if (process == GetCurrentProcessId()) count += 1 + WindowsBelow(window);
    }
    return count;
}

bool IsIcon(HICON icon) {
    ICONINFO info = {};
    if (!GetIconInfo(icon, &info)) return false;
    DeleteObject(info.hbmMask);
    if (info.hbmColor != nullptr) DeleteObject(info.hbmColor);
    return true;
}

/// Windows, menus, icons and pointers. Wine's handles of them are even numbers.
long WineUserObjects() {
    constexpr std::uintptr_t kFirst = 0x20;
    constexpr std::uintptr_t kLast = 0xffef;
    long count = WindowsBelow(nullptr) + WindowsBelow(HWND_MESSAGE);
    for (std::uintptr_t place = kFirst; place <= kLast; place += 2) {
        if (IsMenu(reinterpret_cast<HMENU>(place))) ++count;
        if (IsIcon(reinterpret_cast<HICON>(place))) ++count;
    }
    return count;
}

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

Census TakeCensus() {
    Census census;
    census.keysLostByWine = com_test::CloseKeysLostByWine();
    const auto resources = com_test::ResourcesInUse();
    census.handles = resources.handles;
    census.privateBytes = resources.committedBytes;
    census.heapBytes = resources.heapBytes;
    census.gdiObjects = test_support::GdiObjectsInUse();
    census.userObjects = com_test::IsWine() ? WineUserObjects()
                                            : static_cast<long>(GetGuiResources(GetCurrentProcess(), GR_USEROBJECTS));
    census.liveObjects = LiveObjects();
    return census;
}

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
