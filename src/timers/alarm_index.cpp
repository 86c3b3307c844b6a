#include "timers/alarm_index.h"

#include "timers/timer_owner.h"

namespace kwo::timers {

std::uint32_t AlarmIndex::HashOf(const TimerOwner& owner, std::int32_t itemData) {
    // Owners lie at round addresses, close together: this puts them far apart.
    constexpr std::uint64_t kSpread = 0x9E3779B97F4A7C15;
    constexpr int kHigh = 32;
    const auto address = static_cast<std::uint64_t>(reinterpret_cast<std::uintptr_t>(&owner));
    return static_cast<std::uint32_t>(address * kSpread >> kHigh) + static_cast<std::uint32_t>(itemData);
}

void AlarmIndex::Grow(std::size_t rows) {
    constexpr std::size_t kFirst = 16;
    constexpr std::size_t kPlacesPerRow = 2;
    std::size_t size = mEntries.empty() ? kFirst : mEntries.size();
    while (size < kPlacesPerRow * rows)
        size *= 2;
    if (size == mEntries.size()) return;
    std::vector<Entry> before(size);
    mEntries.swap(before);
    for (const Entry& entry : before) {
        if (entry.row != kNoRow) Add(entry.hash, entry.row);
    }
}

void AlarmIndex::Add(std::uint32_t hash, std::int32_t row) {
    std::size_t place = Home(hash);
    while (mEntries[place].row != kNoRow)
        place = Next(place);
    mEntries[place] = {hash, row};
}

void AlarmIndex::Remove(std::uint32_t hash, std::int32_t row) {
    std::size_t gap = Home(hash);
    while (mEntries[gap].row != row)
        gap = Next(gap);
    // A search ends at an empty place. So what stands behind the gap moves into it, unless it would then stand in front
    // of the place that its hash asks for.
    for (std::size_t place = Next(gap); mEntries[place].row != kNoRow; place = Next(place)) {
        if (Distance(Home(mEntries[place].hash), place) < Distance(gap, place)) continue;
        mEntries[gap] = mEntries[place];
        gap = place;
    }
    mEntries[gap] = {};
}

std::size_t AlarmIndex::Home(std::uint32_t hash) const {
    // Tags are often consecutive: this spreads them evenly over the array.
    constexpr std::uint32_t kSpread = 0x9E3779B9;
    constexpr int kBits = 32;
    return static_cast<std::size_t>(std::uint64_t{hash * kSpread} * mEntries.size() >> kBits);
}

}  // namespace kwo::timers
