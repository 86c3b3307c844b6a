#pragma once

#include <cstdint>
#include <map>

#include "platform/values.h"
#include "platform/whole_numbers.h"

namespace kwo::controls {

using platform::Rounded;

/// The selected days, in the order in which they were selected.
/// Dates that round to the same day are one; the date is kept as it was given first.
/// Members that take a date raise Overflow if it does not fit 32 bits or is not a number; nothing has changed then.
class SelectedDays {
public:
    /// Whether the day is selected.
    bool Has(platform::Date date) const { return mPlaces.contains(KeyOf(date)); }
    /// Adds a day; false if it is already there.
    bool Add(platform::Date date) {
        if (!mPlaces.emplace(KeyOf(date), mNext).second) return false;
        mDates.emplace(mNext++, date);
        return true;
    }
    /// Removes a day; false if it is not there.
    bool Remove(platform::Date date) {
        const auto found = mPlaces.find(KeyOf(date));
        if (found == mPlaces.end()) return false;
        mDates.erase(found->second);
        mPlaces.erase(found);
        return true;
    }
    /// Removes all days.
    void Clear() {
        mPlaces.clear();
        mDates.clear();
    }
    /// The day that was added first, as it was given; the date 0 if there is none.
    platform::Date First() const { return mDates.empty() ? platform::Date{} : mDates.begin()->second; }

private:
    /// The day that a date rounds to; halves go to the even one.
    static std::int32_t KeyOf(platform::Date date) { return Rounded<std::int32_t>(date.days); }

    /// The place of each day in the order of selection.
    std::map<std::int32_t, std::uint64_t> mPlaces;
    /// The date at each place, as it was given.
    std::map<std::uint64_t, platform::Date> mDates;
    /// The next place. Places are never used again.
    std::uint64_t mNext = 0;
};

}  // namespace kwo::controls
