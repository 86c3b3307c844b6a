#pragma once

#include <cstdint>
#include <vector>

#include "platform/text.h"

namespace kwo::frame {

/// The last entries of a trace, kept in memory in a ring.
/// Slots and indexes count from 1, as the debugger shows them. In a full ring of three, with the write index 2, the
/// entries from the oldest to the newest are in the slots 2, 3 and 1.
class SavedEvents {
public:
    /// Makes an empty ring of `size` slots; `size` is at least 1.
    /// The old ring is lost. Memory is taken as slots are written.
    void Create(std::int32_t size);
    /// True once Create was called.
    bool Exists() const { return mWriteIndex != 0; }
    /// Puts an entry into the next slot, over the oldest one if the ring is full.
    /// Does nothing without a ring. If memory runs out, the ring stays as it was.
    void Save(platform::TextView entry);

    /// The entry in slot `index`.
    /// Empty if there is none, also for an index outside the ring. Valid until the next Save or Create.
    platform::TextView Slot(std::int32_t index) const;
    /// The number of slots; 0 before Create.
    std::int32_t Size() const { return mSize; }
    /// The slot that is written next; in a full ring it holds the oldest entry. 0 without a ring.
    std::int32_t WriteIndex() const { return mWriteIndex; }
    /// Starts at 1. When the write index reaches it, it moves on by one.
    std::int32_t OldestIndex() const { return mOldestIndex; }

private:
    std::int32_t After(std::int32_t index) const { return index == mSize ? 1 : index + 1; }

    /// As many as were written, so that a large ring costs what is in it.
    std::vector<platform::Text> mSlots;
    std::int32_t mSize = 0;
    std::int32_t mWriteIndex = 0;
    std::int32_t mOldestIndex = 0;
};

}  // namespace kwo::frame
