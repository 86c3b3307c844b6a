#pragma once

#include <cstdint>
#include <vector>

#include "platform/text.h"

namespace kwo::frame {

/// The last few entries of a trace that goes to no file, in a ring.
class SavedEvents {
public:
    /// An empty ring of `size` slots, at least 1; what was in the ring before is gone.
    void Create(std::int32_t size);
    bool Exists() const { return mWriteIndex != 0; }
    /// Nothing where there is no ring.
    void Save(platform::TextView entry);

    /// Slots are counted from 1; empty when nothing was saved there yet.
    platform::TextView Slot(std::int32_t index) const;
    std::int32_t Size() const { return mSize; }
    /// The next slot to be written, once the ring is full the one of the oldest entry; 0 when there is no ring.
    std::int32_t WriteIndex() const { return mWriteIndex; }
    /// Pushed on by the write index when that reaches it.
    std::int32_t OldestIndex() const { return mOldestIndex; }

private:
    std::int32_t After(std::int32_t index) const { return index == mSize ? 1 : index + 1; }

    std::vector<platform::Text> mSlots;  ///< as many as were written, so that a large ring costs what is in it
    std::int32_t mSize = 0;
    std::int32_t mWriteIndex = 0;
    std::int32_t mOldestIndex = 0;
};

}  // namespace kwo::frame
