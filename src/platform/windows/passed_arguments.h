#pragma once

#include <windows.h>
#include <oleauto.h>

#include <optional>
#include <span>
#include <vector>

#include "platform/windows/variant_bridge.h"

namespace kwo::platform::windows {

/// How to pass the arguments of a call, the first one first: as a value of a type, as a reference to one (VT_BYREF |
/// type), or as a reference to a variant (VT_BYREF | VT_VARIANT).
using PassedTypes = std::vector<VARTYPE>;

/// As each Argument says: values, and references to the types of the values.
PassedTypes TypesAsGiven(std::span<const Argument> arguments);
/// The same with 32 bits for whole numbers.
PassedTypes TypesWithLongs(std::span<const Argument> arguments);
/// References to variants. A missing argument goes as a value, for callees that do not follow references.
PassedTypes VariantReferences(std::span<const Argument> arguments);
/// References to the types of the values.
PassedTypes TypedReferences(std::span<const Argument> arguments);
/// The same with 32 bits for whole numbers.
PassedTypes LongReferences(std::span<const Argument> arguments);
/// The values alone, for callees that take no references.
PassedTypes Values(std::span<const Argument> arguments);

/// The types of the first `count` parameters of the method, from the object's type information; nothing if that does
/// not say or has fewer. An object by reference is reported as such, or as a value for a callee that wants an interface
/// of its own.
std::optional<PassedTypes> DescribedTypes(IDispatch& object, DISPID method, std::size_t count, bool objectsAsValues);

/// The arguments of one call.
class PassedArguments {
public:
    /// Converts the arguments. Raises TypeMismatch or Overflow if one does not fit its type.
    PassedArguments(std::span<const Argument> arguments, const PassedTypes& types);

    /// The arguments in reverse order, as automation passes them.
    std::span<VARIANT> Backwards() { return mBackwards; }
    /// Reads back what the callee wrote into the arguments by reference. If a value does not fit, raises TypeMismatch
    /// or Overflow and changes nothing.
    void ReadBack(std::span<Argument> arguments) const;

private:
    std::vector<com_support::OwnedVariant> mCells;
    std::vector<VARTYPE> mOriginalTypes;  ///< VT_EMPTY where the argument was not converted
    std::vector<VARIANT> mBackwards;
};

}  // namespace kwo::platform::windows
