#pragma once

#include <map>
#include <optional>
#include <string>

#include "com_values.h"

namespace kwohost {

/// The interface through which an object fires its events.
struct EventInterface {
    IID id = IID_NULL;
    std::map<DISPID, std::wstring> names;
};

/// The default source interface of an object's class. Nothing if the object does not tell or has none.
std::optional<EventInterface> FindEventInterface(IUnknown* object);

}  // namespace kwohost
