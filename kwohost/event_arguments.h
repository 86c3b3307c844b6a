#pragma once

#include <vector>

#include "com_values.h"

namespace kwohost {

/// The arguments of an event on their way through a script: what came by reference, of whatever type, is handed on as
/// a reference to a variant, the only kind of reference that a script assigns to.
class EventArguments {
public:
    explicit EventArguments(const DISPPARAMS& original);

    DISPPARAMS& ForScript() { return mParams; }
    /// Stores what the script assigned, in the types of the event's source. The failure of a conversion is returned
    /// after the other arguments have been stored.
    [[nodiscard]] HRESULT WriteBack();

private:
    const DISPPARAMS& mOriginal;
    std::vector<Variant> mValues;
    std::vector<VARIANT> mForScript;
    DISPPARAMS mParams = {};
};

}  // namespace kwohost
