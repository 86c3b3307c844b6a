#pragma once

#include <vector>

#include "com_values.h"

namespace kwohost {

/// The arguments of an event on their way through a script.
/// A by-reference argument of any type is passed on as a reference to a variant, the only kind that a script assigns
/// to.
///
///     EventArguments arguments(params);
///     script->Invoke(id, IID_NULL, locale, DISPATCH_METHOD, &arguments.ForScript(), ...);
///     const HRESULT stored = arguments.WriteBack();
class EventArguments {
public:
    /// Copies the values. `original` must outlive it. Raises what copying returns, for example for a null reference.
    explicit EventArguments(const DISPPARAMS& original);

    /// The arguments to call the procedure with. Valid as long as this object.
    DISPPARAMS& ForScript() { return mParams; }
    /// Stores what the script assigned, in the types of the event's source.
    /// Arguments by value are left alone.
    /// If a conversion fails, the other arguments are still stored; then the failure is returned. Storing may run code
    /// of objects that are replaced.
    [[nodiscard]] HRESULT WriteBack();

private:
    /// The arguments of the event's source.
    const DISPPARAMS& mOriginal;
    /// Copies of the values, where the script writes.
    std::vector<OwnedVariant> mValues;
    /// What the script gets: values, and references to the copies.
    std::vector<VARIANT> mForScript;
    /// Refers to mForScript.
    DISPPARAMS mParams = {};
};

}  // namespace kwohost
