#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace kwo::timers {

class TimerOwner;

/// Finds the row of an alarm by a hash of its owner and tag.
///
/// The hashes and rows lie in one array, at most half full. Each stands in the place that its hash asks for, or in the
/// first one behind it that is free. So most searches read one line of the processor's cache, and no row before its
/// hash is found. TimerTable is its user.
class AlarmIndex {
public:
    /// The hash of an owner's alarm with that tag. Two tags of one owner never have the same.
    static std::uint32_t HashOf(const TimerOwner& owner, std::int32_t itemData);

    /// Makes room for that many rows, and for some more. The index never shrinks.
    /// Raises std::bad_alloc if memory runs out; nothing has changed then.
    void Grow(std::size_t rows);
    /// Adds a row, a number above 0 that is not in the index. There has to be room; there is no check. Allocates no
    /// memory.
    void Add(std::uint32_t hash, std::int32_t row);
    /// Removes a row that was added with that hash.
    void Remove(std::uint32_t hash, std::int32_t row);

    /// The first row with that hash for which `matches(row)` is true; 0 if there is none.
    template <class Matches>
    std::int32_t Find(std::uint32_t hash, const Matches& matches) const {
        if (mEntries.empty()) return kNoRow;
        for (std::size_t place = Home(hash);; place = Next(place)) {
            const Entry& entry = mEntries[place];
            if (entry.row == kNoRow || (entry.hash == hash && matches(entry.row))) return entry.row;
        }
    }

private:
    static constexpr std::int32_t kNoRow = 0;

    /// A place of the array; empty if it has no row.
    struct Entry {
        std::uint32_t hash = 0;
        std::int32_t row = kNoRow;
    };

    std::size_t Home(std::uint32_t hash) const;
    std::size_t Next(std::size_t place) const { return (place + 1) & (mEntries.size() - 1); }
    /// How far the way is from one place on to another.
    std::size_t Distance(std::size_t from, std::size_t to) const { return (to - from) & (mEntries.size() - 1); }

    /// Their number is a power of two.
    std::vector<Entry> mEntries;
};

}  // namespace kwo::timers
