#include "timers/timer_table.h"

#include <algorithm>
#include <functional>
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
    if (mHashHeads.size() < size) GrowHash();
    // So that freeing needs no memory.
    if (mFree.capacity() < size) mFree.reserve(2 * size);
    mRows.resize(size);
    PutFree(static_cast<std::int32_t>(size - 1));
    PutFree(static_cast<std::int32_t>(size));
}

void TimerTable::Take(TimerRow taken) {
    if (mFree.empty()) Grow();
    std::ranges::pop_heap(mFree, std::greater());
    const std::int32_t row = mFree.back();
    mFree.pop_back();
    ++mActiveCount;
    Slot& slot = At(row);
    slot.row = std::move(taken);
    mDue.Set(Index(row), slot.row.due.scaled);
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
    PutFree(row);
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
    if (mHashHeads.empty()) return kNoRow;
    std::int32_t row = mHashHeads[Bucket(owner, itemData)];
    while (row != kNoRow && (Row(row).timer.Get() != &owner || Row(row).itemData != itemData))
        row = mRows[Index(row)].nextOfHash;
    return row;
}

std::size_t TimerTable::Bucket(const TimerOwner& owner, std::int32_t itemData) const {
    // Tags are often consecutive and owners lie at round addresses: this spreads both over all bits.
    constexpr std::uint64_t kSpread = 0x9E3779B97F4A7C15;
    constexpr int kHigh = 32;
    const auto address = static_cast<std::uint64_t>(reinterpret_cast<std::uintptr_t>(&owner));
    const std::uint64_t mixed = (address * kSpread + static_cast<std::uint32_t>(itemData)) * kSpread;
    return static_cast<std::size_t>(mixed >> kHigh) & (mHashHeads.size() - 1);
}

void TimerTable::PutFree(std::int32_t row) {
    mFree.push_back(row);
    std::ranges::push_heap(mFree, std::greater());
}

void TimerTable::LinkAlarm(std::int32_t row) {
    Slot& slot = At(row);
    TimerOwner& owner = *slot.row.timer;
    slot.previousOfOwner = kNoRow;
    slot.nextOfOwner = owner.mFirstAlarmRow;
    if (slot.nextOfOwner != kNoRow) At(slot.nextOfOwner).previousOfOwner = row;
    owner.mFirstAlarmRow = row;
    LinkHash(row);
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
    std::int32_t* link = &mHashHeads[Bucket(owner, slot.row.itemData)];
    while (*link != row)
        link = &At(*link).nextOfHash;
    *link = slot.nextOfHash;
}

void TimerTable::LinkHash(std::int32_t row) {
    Slot& slot = At(row);
    std::int32_t& head = mHashHeads[Bucket(*slot.row.timer, slot.row.itemData)];
    slot.nextOfHash = std::exchange(head, row);
}

void TimerTable::GrowHash() {
    constexpr std::size_t kFirst = 16;
    std::vector<std::int32_t> heads(mHashHeads.empty() ? kFirst : 2 * mHashHeads.size(), kNoRow);
    mHashHeads.swap(heads);
    for (std::int32_t row = 1; row <= SlotCount(); ++row) {
        if (Row(row).type == kAlarm) LinkHash(row);
    }
}

}  // namespace kwo::timers
