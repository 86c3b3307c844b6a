#pragma once

#include <vector>

#include "com_values.h"

namespace kwohost {

/// The arguments of an event on their way through a script. A by-reference argument of any type is passed on as a
/// reference to a variant, the only kind that a script assigns to.
class EventArguments {
public:
    /// Copies the values. `original` must outlive it.
    explicit EventArguments(const DISPPARAMS& original);

    /// The arguments to call the procedure with.
    DISPPARAMS& ForScript() { return mParams; }
    /// Stores what the script assigned, in the types of the event's source. If a conversion fails, the other arguments
    /// are still stored; then the failure is returned.
    [[nodiscard]] HRESULT WriteBack();

private:
    const DISPPARAMS& mOriginal;
    std::vector<OwnedVariant> mValues;
    std::vector<VARIANT> mForScript;
    DISPPARAMS mParams = {};
};

}  // namespace kwohost
