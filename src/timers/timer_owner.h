#pragma once

#include <cstdint>
#include <utility>

#include "platform/values.h"

namespace kwo::timers {

/// What a row of the registry holds, and with that what its owner receives.
/// The numbers are those of the public enumeration TimerEventTypes. Callers pass any number, so the members take plain
/// numbers.
enum RowType : std::int32_t { kFree = 0, kTick = 1, kAlarm = 2 };

/// A timer as the registry sees it: what it calls when a row is due, and how it keeps the timer alive.
/// KWOTimer implements it.
///
/// The owner may be a part of a larger object; the references count for that object. All calls come on the component's
/// thread.
class TimerOwner {
public:
    TimerOwner() = default;
    TimerOwner(const TimerOwner&) = delete;
    TimerOwner& operator=(const TimerOwner&) = delete;

    /// One of the owner's rows is due.
    /// `tickType` is kTick or kAlarm, `itemData` the tag of the alarm (0 for a tick), `newDateTime` is 0.
    /// The registry uses what is written into them: a new date other than 0 adds an alarm at that date with the tag
    /// `itemData`.
    /// If the call raises anything, the owner's rows of that type and tag are cancelled, and nobody is told. The call
    /// may add and cancel rows and run messages.
    virtual void TimerTick(std::int32_t& tickType, std::int32_t& itemData, platform::Date& newDateTime) = 0;

    /// Keeps the owner alive until ReleaseOwner.
    virtual void AddOwnerReference() noexcept = 0;
    /// Ends one AddOwnerReference. The last one may destroy the owner.
    virtual void ReleaseOwner() noexcept = 0;

protected:
    virtual ~TimerOwner() = default;

private:
    // Where the registry's rows of this owner begin, so that finding them does not depend on how many others there are.
    friend class TimerTable;
    std::int32_t mTickRow = 0;
    std::int32_t mFirstAlarmRow = 0;
};

/// A counted reference to an owner, or an empty one.
/// Destroying the last one may destroy the owner, and with that run code of the host.
class OwnerRef {
public:
    OwnerRef() = default;
    /// Adds a reference to `owner`.
    explicit OwnerRef(TimerOwner& owner) : mOwner(&owner) { owner.AddOwnerReference(); }
    /// Adds a reference.
    OwnerRef(const OwnerRef& other) : mOwner(other.mOwner) {
        if (mOwner != nullptr) mOwner->AddOwnerReference();
    }
    /// Takes the reference over; `other` is empty then.
    OwnerRef(OwnerRef&& other) noexcept : mOwner(std::exchange(other.mOwner, nullptr)) {}
    /// Releases the old reference last, when this already holds the new one.
    OwnerRef& operator=(OwnerRef other) noexcept {
        std::swap(mOwner, other.mOwner);
        return *this;
    }
    /// Releases the reference.
    ~OwnerRef() {
        if (mOwner != nullptr) mOwner->ReleaseOwner();
    }

    /// The owner, without a reference for the caller; null for an empty reference.
    TimerOwner* Get() const { return mOwner; }
    /// The owner. The reference must not be empty.
    TimerOwner& operator*() const { return *mOwner; }

private:
    TimerOwner* mOwner = nullptr;
};

}  // namespace kwo::timers
