#pragma once

#include <memory>

#include "kwoutil.h"
#include "timer/timer.h"

namespace kwo::com {

/// A 32-bit number as a by-reference argument. What the callee writes is used, even if the call fails.
class PassedNumber {
public:
    /// `number` must outlive it.
    explicit PassedNumber(std::int32_t& number) : mNumber(number), mPassed(number) {}
    ~PassedNumber() { mNumber = mPassed; }
    PassedNumber(const PassedNumber&) = delete;
    PassedNumber& operator=(const PassedNumber&) = delete;
    /// What to pass to the callee.
    LONG* Reference() { return &mPassed; }

private:
    std::int32_t& mNumber;
    LONG mPassed;
};

/// An object of the host that receives ticks or alarms in place of events.
template <class Kind, class Interface>
class HostCallback : public Kind {
public:
    /// The object that was given, which late-bound callers read. The caller owns no reference.
    virtual IDispatch* Given() const = 0;
    /// The same as an interface that compiled callers can call: the object's own, or that of a stand-in. The caller
    /// owns no reference.
    virtual Interface* Typed() = 0;
};

using HostTickCallback = HostCallback<timer::TickCallback, _IKWOTimer>;
using HostAlarmCallback = HostCallback<timer::AlarmCallback, _IKWOAlarm>;

/// Makes a callback of an object that implements the callback interface, or whose IDispatch knows the callback's member
/// by name, as script objects do. Raises TypeMismatch for any other object. Null gives null. `timer` is passed to the
/// callee; it must outlive the result.
std::shared_ptr<HostTickCallback> MakeTickCallback(IUnknown* object, _KWOTimer& timer);
std::shared_ptr<HostAlarmCallback> MakeAlarmCallback(IUnknown* object, _KWOTimer& timer,
                                                     platform::Conversions& conversions);

}  // namespace kwo::com
