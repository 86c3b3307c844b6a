#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <vector>

namespace kwo::timers {

/// A due time for each place, and which is the earliest and the first that is due, in logarithmic time.
///
/// A tree of minima, eight to a node, so that a node is what one line of the processor's cache holds.
class DueIndex {
public:
    static constexpr std::int64_t kNever = std::numeric_limits<std::int64_t>::max();
    static constexpr std::size_t kNone = std::numeric_limits<std::size_t>::max();

    /// Makes room for places 0 to `size` - 1; new ones are never due. It does not shrink. Changes
    /// nothing when it fails.
    void Grow(std::size_t size);
    void Set(std::size_t place, std::int64_t due);

    /// The earliest due time; kNever when there is none.
    std::int64_t Earliest() const { return mLevels.empty() ? kNever : mLevels.back()[0]; }
    /// The first place that is due at `now`; kNone when none is.
    std::size_t FirstDue(std::int64_t now) const;

private:
    static constexpr std::size_t kFan = 8;

    static std::size_t WholeNodes(std::size_t size);
    static std::int64_t Minimum(const std::vector<std::int64_t>& level, std::size_t node);

    /// The lowest level holds the places, each higher one the minima of the nodes of the one below, the top one value.
    std::vector<std::vector<std::int64_t>> mLevels;
};

}  // namespace kwo::timers
