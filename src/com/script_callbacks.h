#pragma once

#include "com/server/com_values.h"
#include "kwoutil.h"
#include "platform/variant.h"

namespace kwo::com {

/// The callback interfaces over a script's object, which has only a member of the callback's name: what compiled
/// callers get to call. An object of its own, with an identity of its own, that holds `script`.
ComPtr<_IKWOTimer> MakeScriptTick(platform::HostObjectRef script);
ComPtr<_IKWOAlarm> MakeScriptAlarm(platform::HostObjectRef script);

}  // namespace kwo::com
