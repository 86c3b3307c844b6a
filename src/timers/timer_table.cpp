#include "timers/timer_table.h"

#include <limits>
#include <utility>

#include "platform/component_error.h"

namespace kwo::timers {

void TimerTable::Grow() {
    constexpr std::size_t kStep = 2;
    constexpr std::size_t kMost = std::numeric_limits<std::int32_t>::max();
    const std::size_t size = mRows.size() + kStep;
    if (size > kMost) platform::RaiseRuntime(platform::RuntimeError::Overflow);  // uncovered: needs 100 GB of rows
    mDue.Grow(size);
    mAlarms.Grow(size);
    mFree.Grow(size);
    mRows.resize(size);
    mFree.Add(size - 2);
    mFree.Add(size - 1);
}

void TimerTable::Take(TimerRow taken) {
    std::size_t place = mFree.TakeLowest();
    if (place == PlaceSet::kNone) {
        Grow();
        place = mFree.TakeLowest();
    }
    ++mActiveCount;
    const auto row = static_cast<std::int32_t>(place + 1);
    Slot& slot = mRows[place];
    slot.row = std::move(taken);
    mDue.Set(place, slot.row.due.scaled);
    if (slot.row.type == kTick) {
        (*slot.row.timer).mTickRow = row;
    } else {
        LinkAlarm(row);
    }
}

OwnerRef TimerTable::Free(std::int32_t row) {
    Slot& slot = At(row);
    if (slot.row.type == kTick) {
        (*slot.row.timer).mTickRow = kNoRow;
    } else {
        UnlinkAlarm(row);
    }
    mDue.Set(Index(row), DueIndex::kNever);
    mFree.Add(Index(row));
    --mActiveCount;
    slot.row.type = kFree;
    return std::exchange(slot.row.timer, {});
}

void TimerTable::SetDue(std::int32_t row, platform::Milliseconds due) {
    At(row).row.due = due;
    mDue.Set(Index(row), due.scaled);
}

std::int32_t TimerTable::FirstDue(platform::Milliseconds now) const {
    const std::size_t place = mDue.FirstDue(now.scaled);
    return place == DueIndex::kNone ? kNoRow : static_cast<std::int32_t>(place + 1);
}

std::int32_t TimerTable::AlarmOf(const TimerOwner& owner, std::int32_t itemData) const {
    // With this hash the owner has no other alarm.
    return mAlarms.Find(AlarmIndex::HashOf(owner, itemData),
                        [&](std::int32_t row) { return Row(row).timer.Get() == &owner; });
}

void TimerTable::LinkAlarm(std::int32_t row) {
    Slot& slot = At(row);
    TimerOwner& owner = *slot.row.timer;
    slot.previousOfOwner = kNoRow;
    slot.nextOfOwner = owner.mFirstAlarmRow;
    if (slot.nextOfOwner != kNoRow) At(slot.nextOfOwner).previousOfOwner = row;
    owner.mFirstAlarmRow = row;
    mAlarms.Add(AlarmIndex::HashOf(owner, slot.row.itemData), row);
}

void TimerTable::UnlinkAlarm(std::int32_t row) {
    const Slot& slot = At(row);
    TimerOwner& owner = *slot.row.timer;
    if (slot.nextOfOwner != kNoRow) At(slot.nextOfOwner).previousOfOwner = slot.previousOfOwner;
    if (slot.previousOfOwner != kNoRow) {
        At(slot.previousOfOwner).nextOfOwner = slot.nextOfOwner;
    } else {
        owner.mFirstAlarmRow = slot.nextOfOwner;
    }
    mAlarms.Remove(AlarmIndex::HashOf(owner, slot.row.itemData), row);
}

}  // namespace kwo::timers
