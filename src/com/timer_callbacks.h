#pragma once

#include <memory>

#include "kwoutil.h"
#include "timer/timer.h"

namespace kwo::com {

/// A 32-bit number as a by-reference argument: a LONG of the callee's, kept in step with a number of the logic.
/// What the callee writes is used, even if the call fails.
///
///     PassedNumber alarmData(itemData);
///     callback.Alarm(timer.InOut(), alarmData.Reference(), &date);
class PassedNumber {
public:
    /// `number` must outlive it.
    explicit PassedNumber(std::int32_t& number) : mNumber(number), mPassed(number) {}
    /// Writes what the callee has left into the number.
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
/// `Kind` is the callback of the logic, `Interface` the one that compiled programs implement.
template <class Kind, class Interface>
class HostCallback : public Kind {
public:
    /// The object that was given, which late-bound callers of TimerEvents and AlarmEvents read.
    /// The caller owns no reference.
    virtual IDispatch* Given() const = 0;
    /// The same as an interface that compiled callers can call: the object's own, or that of a stand-in, which is made
    /// at the first call and stays the same.
    /// The caller owns no reference.
    /// Raises what MakeScriptTick raises.
    virtual Interface* Typed() = 0;
};

using HostTickCallback = HostCallback<timer::TickCallback, _IKWOTimer>;
using HostAlarmCallback = HostCallback<timer::AlarmCallback, _IKWOAlarm>;

/// Makes a callback of an object that implements the callback interface, or whose IDispatch knows the callback's
/// member by name, as script objects do.
/// Null gives null.
/// Raises TypeMismatch for any other object. Asking for the name may run code of the object.
/// `timer` is passed to the callee; it must outlive the result. It is not counted, because the timer holds the result.
std::shared_ptr<HostTickCallback> MakeTickCallback(IUnknown* object, _KWOTimer& timer);
std::shared_ptr<HostAlarmCallback> MakeAlarmCallback(IUnknown* object, _KWOTimer& timer,
                                                     platform::Conversions& conversions);

}  // namespace kwo::com
