#pragma once

#include <map>
#include <optional>
#include <string>

#include "com_values.h"

namespace kwohost {

/// The interface through which an object fires its events. A sink answers queries for `id`.
struct EventInterface {
    IID id = IID_NULL;
    /// The names of the events by their ids, as the type library spells them.
    std::map<DISPID, std::wstring> names;
};

/// The default source interface of an object's class, by its type information.
/// An interface that the object itself states counts first.
/// Nothing if the object does not tell or has none.
/// Raises what reading the type information returns.
std::optional<EventInterface> FindEventInterface(IUnknown* object);

}  // namespace kwohost
