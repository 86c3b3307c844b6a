#pragma once

#include <cstdint>
#include <map>

#include "controls/pixels.h"
#include "platform/values.h"

namespace kwo::controls {

/// The selected days, in the order of their selection. Dates that round to the same day are one. Raises Overflow for
/// what is no day at all.
class SelectedDays {
public:
    bool Has(platform::Date date) const { return mPlaces.contains(KeyOf(date)); }
    /// False when it is there already.
    bool Add(platform::Date date) {
        if (!mPlaces.emplace(KeyOf(date), mNext).second) return false;
        mDates.emplace(mNext++, date);
        return true;
    }
    /// False when it was not there.
    bool Remove(platform::Date date) {
        const auto found = mPlaces.find(KeyOf(date));
        if (found == mPlaces.end()) return false;
        mDates.erase(found->second);
        mPlaces.erase(found);
        return true;
    }
    void Clear() {
        mPlaces.clear();
        mDates.clear();
    }
    /// The date 0 when there is none.
    platform::Date First() const { return mDates.empty() ? platform::Date{} : mDates.begin()->second; }

private:
    static std::int32_t KeyOf(platform::Date date) { return Rounded<std::int32_t>(date.days); }

    std::map<std::int32_t, std::uint64_t> mPlaces;
    std::map<std::uint64_t, platform::Date> mDates;
    std::uint64_t mNext = 0;
};

}  // namespace kwo::controls
