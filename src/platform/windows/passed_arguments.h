#pragma once

#include <windows.h>
#include <oleauto.h>

#include <optional>
#include <span>
#include <vector>

#include "platform/windows/variant_bridge.h"

namespace kwo::platform::windows {

/// How the arguments of a call go out, first one first: a value of a type, a reference to one (VT_BYREF | type), or a
/// reference to a variant (VT_BYREF | VT_VARIANT).
using PassedTypes = std::vector<VARTYPE>;

/// Exactly as `Argument` says: values, and references to the types of what they hold.
PassedTypes TypesAsGiven(std::span<const Argument> arguments);
/// The same with 32 bits for whole numbers.
PassedTypes TypesWithLongs(std::span<const Argument> arguments);
/// References to variants. What was left out goes as a value, for callees that do not follow references.
PassedTypes VariantReferences(std::span<const Argument> arguments);
/// References to the types of what the arguments hold.
PassedTypes TypedReferences(std::span<const Argument> arguments);
/// The same with 32 bits for whole numbers.
PassedTypes LongReferences(std::span<const Argument> arguments);
PassedTypes Values(std::span<const Argument> arguments);

/// What the object's type information says that the first `count` parameters of the method are; nothing when it does
/// not say or has fewer. Objects by reference are told as such, or as values for a callee that wants an interface of
/// its own.
std::optional<PassedTypes> DescribedTypes(IDispatch& object, DISPID method, std::size_t count, bool objectsAsValues);

/// The arguments of one call.
class PassedArguments {
public:
    /// Raises TypeMismatch or Overflow when an argument is not what its type can hold.
    PassedArguments(std::span<const Argument> arguments, const PassedTypes& types);

    /// As automation takes them: the last one first.
    std::span<VARIANT> Backwards() { return mBackwards; }
    /// Gives back what the callee left in those by reference. Raises TypeMismatch or Overflow, and changes nothing,
    /// when that does not fit.
    void ReadBack(std::span<Argument> arguments) const;

private:
    std::vector<com_support::OwnedVariant> mCells;
    std::vector<VARTYPE> mOriginalTypes;  ///< VT_EMPTY where the argument was not converted
    std::vector<VARIANT> mBackwards;
};

}  // namespace kwo::platform::windows
