#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "census.h"

namespace kwo::soak {

/// Judges whether a series of states stays flat.
class Flatness {
public:
    /// `most` states can be added without taking memory, which would be taken for growth.
    explicit Flatness(std::size_t most) { mSeries.reserve(most); }
    void Add(const Census& census) { mSeries.push_back(census); }
    std::size_t Count() const { return mSeries.size(); }
    /// One line for each measure that grows steadily by more than its bound. The series is cut into nine parts of equal
    /// length; what counts is the median of the steps from the lowest value of one part to that of the next, eight
    /// times. So whatever is lost in each round shows, and neither a peak nor a table of the system's that has become
    /// larger once. `table` gets a line for each measure.
    std::vector<std::string> Growing(std::vector<std::string>& table) const;

    static constexpr std::size_t kParts = 9;
    static constexpr std::size_t kFewest = kParts;  ///< states that can be judged

private:
    std::vector<Census> mSeries;
};

}  // namespace kwo::soak
