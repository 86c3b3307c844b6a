#pragma once

#include <cstdint>
#include <vector>

#include "platform/values.h"
#include "timers/due_index.h"
#include "timers/timer_owner.h"

namespace kwo::timers {

enum class RowType : std::int32_t { Free = 0, Tick = 1, Alarm = 2 };

/// One pending occurrence, or a place for one.
struct TimerRow {
    RowType type = RowType::Free;
    std::int32_t interval = 0;  ///< milliseconds; 0 for an alarm
    std::int32_t itemData = 0;  ///< the alarm's tag; 0 for a tick
    OwnerRef timer;
    platform::Milliseconds due;
};

/// The rows of the timer registry, numbered from 1 to SlotCount.
///
/// Beside the rows stand indexes by due time, by owner and by tag: no operation but the freeing of many rows looks at
/// every row. An owner has at most one tick row and at most one alarm row of each tag; the caller sees to that.
class TimerTable {
public:
    static constexpr std::int32_t kNoRow = 0;

    std::int32_t SlotCount() const { return static_cast<std::int32_t>(mRows.size()); }
    std::int32_t ActiveCount() const { return mActiveCount; }
    const TimerRow& Row(std::int32_t row) const { return mRows[Index(row)].row; }

    /// Adds two free rows.
    void Grow();
    /// Fills the first free row, a new one when there is none. Changes nothing when it fails.
    void Take(TimerRow row);
    /// Gives the row's reference to its owner to the caller: letting go of it may end the owner.
    [[nodiscard]] OwnerRef Free(std::int32_t row);
    void SetDue(std::int32_t row, platform::Milliseconds due);

    /// The first row that is due at `now`.
    std::int32_t FirstDue(platform::Milliseconds now) const;
    /// The earliest due time of all used rows; DueIndex::kNever when none is used.
    std::int64_t EarliestDue() const { return mDue.Earliest(); }

    static std::int32_t TickOf(const TimerOwner& owner) { return owner.mTickRow; }
    /// Any one of the owner's alarms.
    static std::int32_t FirstAlarmOf(const TimerOwner& owner) { return owner.mFirstAlarmRow; }
    std::int32_t AlarmOf(const TimerOwner& owner, std::int32_t itemData) const;
    /// Any row that is used, for whoever empties the table.
    std::int32_t FirstUsed() const { return FirstDue({DueIndex::kNever - 1}); }

private:
    /// A row and its neighbours: in the list of its owner's alarms, and among those with the same hash.
    struct Slot {
        TimerRow row;
        std::int32_t previousOfOwner = kNoRow;
        std::int32_t nextOfOwner = kNoRow;
        std::int32_t nextOfHash = kNoRow;
    };

    static std::size_t Index(std::int32_t row) { return static_cast<std::size_t>(row) - 1; }
    Slot& At(std::int32_t row) { return mRows[Index(row)]; }
    std::size_t Bucket(const TimerOwner& owner, std::int32_t itemData) const;
    void PutFree(std::int32_t row);
    void LinkAlarm(std::int32_t row);
    void UnlinkAlarm(std::int32_t row);
    void LinkHash(std::int32_t row);
    void GrowHash();

    std::vector<Slot> mRows;
    std::int32_t mActiveCount = 0;
    DueIndex mDue;
    std::vector<std::int32_t> mFree;       ///< a heap, the lowest row on top
    std::vector<std::int32_t> mHashHeads;  ///< a power of two
};

}  // namespace kwo::timers
