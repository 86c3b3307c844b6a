#pragma once

#include "com/server/com_values.h"
#include "kwoutil.h"
#include "platform/variant.h"

namespace kwo::com {

/// The callback interfaces for a script's object, which has only a procedure of the callback's name.
/// Compiled programs call them, after they have read TimerEvents or AlarmEvents. The result is an object of its own
/// and holds `script`. Its member passes the arguments to the procedure by reference and takes them back; it returns
/// the failure of the procedure.
/// Never null.
/// Raises std::bad_alloc, and what reading the type library raises.
ComPtr<_IKWOTimer> MakeScriptTick(platform::HostObjectRef script);
ComPtr<_IKWOAlarm> MakeScriptAlarm(platform::HostObjectRef script);

}  // namespace kwo::com
