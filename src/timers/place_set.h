#pragma once

#include <cstddef>
#include <limits>
#include <vector>

namespace kwo::timers {

/// A set of places that gives back the lowest one, in a few steps however many there are.
///
/// A place is a number from 0. The set is a tree of words with one bit for each place; a word of a higher level has a
/// bit for each word below that is not zero. TimerTable keeps its free rows in one.
class PlaceSet {
public:
    /// The result for no place.
    static constexpr std::size_t kNone = std::numeric_limits<std::size_t>::max();

    /// Makes room for the places 0 to `size` - 1, and for some more. The set never shrinks.
    /// Raises std::bad_alloc if memory runs out; nothing has changed then.
    void Grow(std::size_t size);
    /// Adds a place that there is room for; there is no check. Allocates no memory.
    void Add(std::size_t place);
    /// Takes the lowest place out and returns it; kNone if the set is empty.
    std::size_t TakeLowest();

private:
    using Word = std::size_t;
    static constexpr std::size_t kBits = std::numeric_limits<Word>::digits;

    /// The lowest level holds the places, the top one is one word.
    std::vector<std::vector<Word>> mLevels;
};

}  // namespace kwo::timers
