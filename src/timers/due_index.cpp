#include "timers/due_index.h"

#include <algorithm>
#include <utility>

namespace kwo::timers {

void DueIndex::Grow(std::size_t size) {
    if (!mLevels.empty() && size <= mLevels.front().size()) return;
    const std::size_t before = mLevels.empty() ? 0 : mLevels.front().size();
    const std::size_t room = WholeNodes(std::max(size, 2 * before));
    // Built aside, so that nothing is lost if there is no memory for more.
    std::vector<std::vector<std::int64_t>> levels(1);
    levels[0].reserve(room);
    if (before > 0) levels[0] = mLevels.front();
    levels[0].resize(room, kNever);
    while (levels.back().size() > 1) {
        const std::vector<std::int64_t>& below = levels.back();
        std::vector<std::int64_t> minima;
        for (std::size_t node = 0; node < below.size() / kFan; ++node)
            minima.push_back(Minimum(below, node));
        if (minima.size() > 1) minima.resize(WholeNodes(minima.size()), kNever);
        levels.push_back(std::move(minima));
    }
    mLevels.swap(levels);
}

void DueIndex::Set(std::size_t place, std::int64_t due) {
    const std::int64_t before = std::exchange(mLevels[0][place], due);
    for (std::size_t level = 1; level < mLevels.size(); ++level) {
        place /= kFan;
        std::int64_t& earliest = mLevels[level][place];
        // Only when the earliest of a node becomes later, all of them have to be looked at.
        if (due > earliest) {
            if (before > earliest) return;
            due = Minimum(mLevels[level - 1], place);
        }
        if (due == earliest) return;
        earliest = due;
    }
}

std::size_t DueIndex::FirstDue(std::int64_t now) const {
    if (Earliest() > now) return kNone;
    std::size_t place = 0;
    for (std::size_t level = mLevels.size() - 1; level-- > 0;) {
        place *= kFan;
        while (mLevels[level][place] > now)
            ++place;
    }
    return place;
}

std::size_t DueIndex::WholeNodes(std::size_t size) {
    return (size + kFan - 1) / kFan * kFan;
}

std::int64_t DueIndex::Minimum(const std::vector<std::int64_t>& level, std::size_t node) {
    const std::int64_t* const values = &level[node * kFan];
    std::int64_t earliest = values[0];
    for (std::size_t i = 1; i < kFan; ++i)
        earliest = std::min(earliest, values[i]);
    return earliest;
}

}  // namespace kwo::timers
