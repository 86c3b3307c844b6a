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
///
/// The functions below are the ways in which DispatchObject tries one after the other. In each of them a missing
/// argument goes as a value (VT_ERROR), for callees that do not follow references.
using PassedTypes = std::vector<VARTYPE>;

/// As each Argument says: values, and references to the types of the values.
/// A value that no reference leads to, such as Empty or Null, is passed by a reference to a variant.
PassedTypes TypesAsGiven(std::span<const Argument> arguments);
/// The same with 32 bits for whole numbers, for callees that declare all of them so.
PassedTypes TypesWithLongs(std::span<const Argument> arguments);
/// References to variants, also where the argument is by value: script engines write into no others.
PassedTypes VariantReferences(std::span<const Argument> arguments);
/// References to the types of the values, also where the argument is by value.
PassedTypes TypedReferences(std::span<const Argument> arguments);
/// The same with 32 bits for whole numbers.
PassedTypes LongReferences(std::span<const Argument> arguments);
/// The values alone, for callees that take no references.
PassedTypes Values(std::span<const Argument> arguments);

/// The types of the first `count` parameters of the method, from the object's type information.
/// Nothing if that does not say, has fewer, or has one that no VARIANT can hold.
/// An object by reference is reported as such, or with `objectsAsValues` as a value, for a callee that wants an
/// interface of its own.
std::optional<PassedTypes> DescribedTypes(IDispatch& object, DISPID method, std::size_t count, bool objectsAsValues);

/// The arguments of one call, converted, and what the callee makes of them.
/// Use it for one call only.
///
///     PassedArguments passed(arguments, types);
///     invoke(passed.Backwards());
///     passed.ReadBack(arguments);
class PassedArguments {
public:
    /// Converts the arguments.
    /// `types` has one type for each.
    /// Raises TypeMismatch or Overflow if one does not fit its type, and std::bad_alloc.
    PassedArguments(std::span<const Argument> arguments, const PassedTypes& types);

    /// The arguments in reverse order, as automation passes them. Valid as long as this object.
    std::span<VARIANT> Backwards() { return mBackwards; }
    /// Reads back what the callee wrote into the arguments by reference, in the types that the values had.
    /// An object that was not replaced stays the same one. If a value does not fit, raises TypeMismatch or Overflow
    /// and changes nothing.
    void ReadBack(std::span<Argument> arguments);

private:
    /// The converted values, where references lead.
    std::vector<com_support::OwnedVariant> mCells;
    /// VT_EMPTY where the argument was not converted.
    std::vector<VARTYPE> mOriginalTypes;
    /// Values and references to the cells. They own nothing.
    std::vector<VARIANT> mBackwards;
};

}  // namespace kwo::platform::windows
