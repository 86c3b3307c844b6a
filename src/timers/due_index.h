#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <vector>

namespace kwo::timers {

/// Finds the earliest of many due times, and the first place that is due, in logarithmic time.
///
/// A place is a number from 0; a due time is any 64-bit number, in whatever unit its user counts. The index is a tree
/// of minima with eight values to a node, so that a node fills one line of the processor's cache. TimerTable is its
/// user.
class DueIndex {
public:
    /// The due time of a place that is never due. It counts as later than every other.
    static constexpr std::int64_t kNever = std::numeric_limits<std::int64_t>::max();
    /// The result for no place.
    static constexpr std::size_t kNone = std::numeric_limits<std::size_t>::max();

    /// Makes room for the places 0 to `size` - 1, and for some more.
    /// New places are never due. The index never shrinks.
    /// Raises std::bad_alloc if memory runs out; nothing has changed then.
    void Grow(std::size_t size);
    /// Sets the due time of a place that there is room for; there is no check. Allocates no memory.
    void Set(std::size_t place, std::int64_t due);

    /// The earliest due time of all places; kNever if there is none.
    std::int64_t Earliest() const { return mLevels.empty() ? kNever : mLevels.back()[0]; }
    /// The lowest place whose due time is `now` or before; kNone if there is none.
    std::size_t FirstDue(std::int64_t now) const;

private:
    static constexpr std::size_t kFan = 8;

    /// `size` rounded up to whole nodes.
    static std::size_t WholeNodes(std::size_t size);
    /// The earliest due time in a node of a level.
    static std::int64_t Minimum(const std::vector<std::int64_t>& level, std::size_t node);

    /// The lowest level holds the places, each higher one the minima of the nodes of the one below, the top one value.
    std::vector<std::vector<std::int64_t>> mLevels;
};

}  // namespace kwo::timers
