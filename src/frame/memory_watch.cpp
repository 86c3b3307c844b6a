#include "frame/memory_watch.h"

#include <utility>

#include "frame/text_routines.h"

namespace kwo::frame {

namespace {

using platform::Conversions;
using platform::ProcessMemory;

constexpr TextView kCount = u"#,##0";

std::int64_t Change(std::uint64_t before, std::uint64_t now) {
    return static_cast<std::int64_t>(now - before);
}

bool IsMuch(std::int64_t change) {
    constexpr std::int64_t kMuch = 1024;
    return change > kMuch || change < -kMuch;
}

Text SignedCount(Conversions& conversions, std::int64_t change) {
    const Text count = conversions.FormatNumber(static_cast<double>(change), kCount);
    return change >= 0 ? u"+" + count : count;
}

}  // namespace

void MemoryWatch::Start(std::uint32_t processId) {
    mProcess = mMemory.Open(ProcessMemory::kQueryInformation, false, processId);
}

void MemoryWatch::Stop() {
    if (mProcess != 0) mMemory.Close(std::exchange(mProcess, 0));
}

Text MemoryWatch::ChangeLine() {
    struct Counter {
        TextView name;
        std::uint64_t ProcessMemory::Counters::*bytes;
    };
    // In the order of the line.
    static constexpr Counter kCounters[] = {
        {u"Page File=", &ProcessMemory::Counters::pageFile},
        {u"Paged Pool=", &ProcessMemory::Counters::pagedPool},
        {u"Non-Paged Pool=", &ProcessMemory::Counters::nonPagedPool},
    };

    if (!IsOn()) return {};
    const auto now = mMemory.Query(mProcess);
    if (!now) return {};
    const ProcessMemory::Counters before = std::exchange(mBefore, *now);
    const auto count = [this](std::uint64_t bytes) {
        return mConversions.FormatNumber(static_cast<double>(bytes), kCount);
    };

    Text parts;
    for (const Counter& counter : kCounters) {
        const std::uint64_t bytes = (*now).*counter.bytes;
        const std::int64_t change = Change(before.*counter.bytes, bytes);
        if (!IsMuch(change)) continue;
        parts += Text(counter.name) + count(bytes) + u" " + SignedCount(mConversions, change) + u". ";
    }
    if (parts.empty()) return {};

    parts += u"Working Set=" + count(now->workingSet);
    const std::int64_t change = Change(before.workingSet, now->workingSet);
    if (change != 0) parts += u" " + SignedCount(mConversions, change);
    parts += u". ";
    return u"...Memory use changed. Page Faults=" + mConversions.FormatNumber(now->pageFaults, u"#,##0 ") + parts +
           Text(kCrLf);
}

}  // namespace kwo::frame
