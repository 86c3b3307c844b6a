#pragma once

#include <memory>

#include "kwoutil.h"
#include "timer/kwo_timer.h"

namespace kwo::com {

/// A host's object that takes ticks or alarms in place of events. Reads back as the object that was given.
template <class Kind, class Interface>
class HostCallback : public Kind {
public:
    /// The object as it was given, without a reference; only callers that gave an `Interface` may use it as one.
    virtual Interface* Given() const = 0;
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
