#include "timers/place_set.h"

#include <algorithm>
#include <bit>

namespace kwo::timers {

void PlaceSet::Grow(std::size_t size) {
    const std::size_t before = mLevels.empty() ? 0 : mLevels.front().size();
    if (size <= before * kBits) return;
    // Built aside, so that nothing is lost if there is no memory for more.
    std::vector<std::vector<Word>> levels;
    std::size_t words = std::max((size - 1) / kBits + 1, 2 * before);
    levels.emplace_back(words);
    for (; words > 1; levels.emplace_back(words))
        words = (words - 1) / kBits + 1;
    if (before > 0) std::ranges::copy(mLevels.front(), levels.front().begin());
    for (std::size_t level = 1; level < levels.size(); ++level) {
        for (std::size_t below = 0; below < levels[level - 1].size(); ++below) {
            if (levels[level - 1][below] != 0) levels[level][below / kBits] |= Word{1} << below % kBits;
        }
    }
    mLevels.swap(levels);
}

void PlaceSet::Add(std::size_t place) {
    for (std::vector<Word>& level : mLevels) {
        Word& word = level[place / kBits];
        const bool known = word != 0;
        word |= Word{1} << place % kBits;
        if (known) return;
        place /= kBits;
    }
}

std::size_t PlaceSet::TakeLowest() {
    if (mLevels.empty() || mLevels.back()[0] == 0) return kNone;
    std::size_t lowest = 0;
    for (std::size_t level = mLevels.size(); level-- > 0;)
        lowest = lowest * kBits + static_cast<std::size_t>(std::countr_zero(mLevels[level][lowest]));
    std::size_t place = lowest;
    for (std::vector<Word>& level : mLevels) {
        Word& word = level[place / kBits];
        word &= ~(Word{1} << place % kBits);
        if (word != 0) break;
        place /= kBits;
    }
    return lowest;
}

}  // namespace kwo::timers
