#pragma once

#include <cstdint>
#include <utility>

#include "platform/values.h"

namespace kwo::timers {

/// Who owns rows of the timer registry: a timer as the registry sees it, with a counted reference to the whole object.
class TimerOwner {
public:
    TimerOwner() = default;
    TimerOwner(const TimerOwner&) = delete;
    TimerOwner& operator=(const TimerOwner&) = delete;

    /// One of the owner's rows is due. What the callee writes reaches the registry; a new date that is not 0 sets an
    /// alarm again. A failure costs the owner the row.
    virtual void TimerTick(std::int32_t& tickType, std::int32_t& itemData, platform::Date& newDateTime) = 0;

    virtual void AddOwnerReference() noexcept = 0;
    /// The last one may end the owner.
    virtual void ReleaseOwner() noexcept = 0;

protected:
    virtual ~TimerOwner() = default;

private:
    // Where the registry's rows of this owner begin, so that finding them does not depend on how many others there are.
    friend class TimerTable;
    std::int32_t mTickRow = 0;
    std::int32_t mFirstAlarmRow = 0;
};

/// A counted reference to an owner.
class OwnerRef {
public:
    OwnerRef() = default;
    explicit OwnerRef(TimerOwner& owner) : mOwner(&owner) { owner.AddOwnerReference(); }
    OwnerRef(const OwnerRef& other) : mOwner(other.mOwner) {
        if (mOwner != nullptr) mOwner->AddOwnerReference();
    }
    OwnerRef(OwnerRef&& other) noexcept : mOwner(std::exchange(other.mOwner, nullptr)) {}
    OwnerRef& operator=(OwnerRef other) noexcept {
        std::swap(mOwner, other.mOwner);
        return *this;
    }
    ~OwnerRef() {
        if (mOwner != nullptr) mOwner->ReleaseOwner();
    }

    TimerOwner* Get() const { return mOwner; }
    TimerOwner& operator*() const { return *mOwner; }

private:
    TimerOwner* mOwner = nullptr;
};

}  // namespace kwo::timers
