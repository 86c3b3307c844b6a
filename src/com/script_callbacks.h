#pragma once

#include "com/server/com_values.h"
#include "kwoutil.h"
#include "platform/variant.h"

namespace kwo::com {

/// The callback interfaces for a script's object, which has only a procedure of the callback's name. Compiled programs
/// call them. The result is an object of its own and holds `script`.
ComPtr<_IKWOTimer> MakeScriptTick(platform::HostObjectRef script);
ComPtr<_IKWOAlarm> MakeScriptAlarm(platform::HostObjectRef script);

}  // namespace kwo::com
