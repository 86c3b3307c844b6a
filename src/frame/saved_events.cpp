#include "frame/saved_events.h"

namespace kwo::frame {

void SavedEvents::Create(std::int32_t size) {
    mSlots.clear();
    mSize = size;
    mWriteIndex = 1;
    mOldestIndex = 1;
}

void SavedEvents::Save(platform::TextView entry) {
    if (!Exists()) return;
    const auto slot = static_cast<std::size_t>(mWriteIndex - 1);
    if (slot == mSlots.size()) {
        mSlots.emplace_back(entry);
    } else {
        mSlots[slot].assign(entry);
    }
    mWriteIndex = After(mWriteIndex);
    if (mWriteIndex == mOldestIndex) mOldestIndex = After(mOldestIndex);
}

platform::TextView SavedEvents::Slot(std::int32_t index) const {
    const auto slot = static_cast<std::size_t>(index - 1);
    return index >= 1 && slot < mSlots.size() ? platform::TextView(mSlots[slot]) : platform::TextView();
}

}  // namespace kwo::frame
