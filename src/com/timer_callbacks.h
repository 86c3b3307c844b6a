#pragma once

#include <memory>

#include "kwoutil.h"
#include "timer/timer.h"

namespace kwo::com {

/// A 32-bit number as a by-reference argument of an automation interface: what the callee leaves there counts, also
/// when it fails.
class PassedNumber {
public:
    explicit PassedNumber(std::int32_t& number) : mNumber(number), mPassed(number) {}
    ~PassedNumber() { mNumber = mPassed; }
    PassedNumber(const PassedNumber&) = delete;
    PassedNumber& operator=(const PassedNumber&) = delete;
    LONG* Reference() { return &mPassed; }

private:
    std::int32_t& mNumber;
    LONG mPassed;
};

/// A host's object that takes ticks or alarms in place of events.
template <class Kind, class Interface>
class HostCallback : public Kind {
public:
    /// The very object that was given, as late-bound callers read it; without a reference.
    virtual IDispatch* Given() const = 0;
    /// The same as its interface, which compiled callers call: the object itself where it implements that, else one
    /// that stands for it. Without a reference.
    virtual Interface* Typed() = 0;
};

using HostTickCallback = HostCallback<timer::TickCallback, _IKWOTimer>;
using HostAlarmCallback = HostCallback<timer::AlarmCallback, _IKWOAlarm>;

/// `object` implements the callback interface, or its IDispatch knows the callback's member by name, as script objects
/// do; anything else raises TypeMismatch. Null gives null. `timer` is what the callee is handed; it outlives the
/// result.
std::shared_ptr<HostTickCallback> MakeTickCallback(IUnknown* object, _KWOTimer& timer);
std::shared_ptr<HostAlarmCallback> MakeAlarmCallback(IUnknown* object, _KWOTimer& timer,
                                                     platform::Conversions& conversions);

}  // namespace kwo::com
