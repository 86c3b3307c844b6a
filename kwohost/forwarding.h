#pragma once

#include <string>
#include <vector>

#include "com_values.h"

namespace kwohost {

/// The objects that get the events of a window.
///
///     forwarding.Add(button, L"");
///     for (const ComPtr<IDispatch>& object : forwarding.ObjectsFor(L"MouseDown")) ...
class Forwarding {
public:
    /// `events` are names separated by blanks; without any, the object gets all events.
    /// Replaces the events of an object that is there already.
    void Add(ComPtr<IDispatch> object, const std::wstring& events);
    /// Lets all objects go. It may run code of theirs.
    void Clear();
    /// Those that get this event, in the order in which they were added.
    std::vector<ComPtr<IDispatch>> ObjectsFor(const std::wstring& event) const;

private:
    struct Target {
        ComPtr<IDispatch> object;
        /// Empty for all.
        std::vector<std::wstring> events;
    };

    std::vector<Target> mTargets;
};

/// The id of a member of any object, also of an object of a script; DISPID_UNKNOWN if it has none of that name.
DISPID IdOfMember(IDispatch* object, const std::wstring& name);

}  // namespace kwohost
