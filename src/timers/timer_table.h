#pragma once

#include <cstdint>
#include <vector>

#include "platform/values.h"
#include "timers/alarm_index.h"
#include "timers/due_index.h"
#include "timers/place_set.h"
#include "timers/timer_owner.h"

namespace kwo::timers {

/// One pending tick or alarm, or a free place for one.
struct TimerRow {
    /// kTick or kAlarm, or kFree; the other members then mean nothing.
    RowType type = kFree;
    /// Milliseconds between ticks; 0 for an alarm.
    std::int32_t interval = 0;
    /// The alarm's tag; 0 for a tick.
    std::int32_t itemData = 0;
    /// Keeps the owner alive while the row is used; empty in a free row.
    OwnerRef timer;
    /// On the millisecond clock.
    platform::Milliseconds due;
};

/// The rows of the timer registry, numbered from 1 to SlotCount.
/// A row keeps its number as long as it is used.
///
///     table.Take({kAlarm, 0, tag, OwnerRef(owner), due});
///     const std::int32_t row = table.FirstDue(now);
///     if (row != TimerTable::kNoRow) const OwnerRef last = table.Free(row);
///
/// Indexes by due time, by owner and by tag keep every operation fast, however many rows there are. An owner has at
/// most one tick row and at most one alarm row for each tag; the caller sees to that.
/// The table calls no owner but to count references.
class TimerTable {
public:
    /// No row.
    static constexpr std::int32_t kNoRow = 0;

    /// The number of rows, used and free. It never shrinks.
    std::int32_t SlotCount() const { return static_cast<std::int32_t>(mRows.size()); }
    /// The number of used rows.
    std::int32_t ActiveCount() const { return mActiveCount; }
    /// The row with this number, which must be between 1 and SlotCount. Valid until the table changes.
    const TimerRow& Row(std::int32_t row) const { return mRows[Index(row)].row; }

    /// Adds two free rows.
    /// Raises Overflow beyond the numbers that 32 bits hold, and std::bad_alloc; the rows then stay as they were.
    void Grow();
    /// Puts `row` into the free place with the lowest number, or a new one.
    /// `row` must be a tick or an alarm with an owner.
    /// Raises as Grow does if there is no free place. `row` is then dropped and the used rows are as before.
    void Take(TimerRow row);
    /// Frees a used row and returns its reference to the owner.
    /// Destroy the reference last: it may end the owner and call back.
    [[nodiscard]] OwnerRef Free(std::int32_t row);
    /// Sets the due time of a used row.
    void SetDue(std::int32_t row, platform::Milliseconds due);

    /// The used row with the lowest number that is due at `now`; kNoRow if none is.
    std::int32_t FirstDue(platform::Milliseconds now) const;
    /// The earliest due time of all used rows, in ten-thousandths of a millisecond; DueIndex::kNever if no row is used.
    std::int64_t EarliestDue() const { return mDue.Earliest(); }

    /// The owner's tick row; kNoRow if it has none.
    static std::int32_t TickOf(const TimerOwner& owner) { return owner.mTickRow; }
    /// Any one of the owner's alarm rows; kNoRow if it has none.
    static std::int32_t FirstAlarmOf(const TimerOwner& owner) { return owner.mFirstAlarmRow; }
    /// The owner's alarm row with this tag; kNoRow if it has none.
    std::int32_t AlarmOf(const TimerOwner& owner, std::int32_t itemData) const;
    /// Any used row, to empty the table; kNoRow if there is none.
    std::int32_t FirstUsed() const { return FirstDue({DueIndex::kNever - 1}); }

private:
    /// A row and its neighbours in the list of its owner's alarms.
    struct Slot {
        TimerRow row;
        std::int32_t previousOfOwner = kNoRow;
        std::int32_t nextOfOwner = kNoRow;
    };

    static std::size_t Index(std::int32_t row) { return static_cast<std::size_t>(row) - 1; }
    Slot& At(std::int32_t row) { return mRows[Index(row)]; }
    void LinkAlarm(std::int32_t row);
    void UnlinkAlarm(std::int32_t row);

    std::vector<Slot> mRows;
    std::int32_t mActiveCount = 0;
    /// Of the used rows.
    DueIndex mDue;
    PlaceSet mFree;
    AlarmIndex mAlarms;
};

}  // namespace kwo::timers
