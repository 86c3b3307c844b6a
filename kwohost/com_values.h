#pragma once

#include <ole2.h>

#include <string>
#include <string_view>
#include <utility>

#include "com_support/bstr.h"
#include "com_support/com_object.h"
#include "com_support/com_ptr.h"
#include "com_support/owned_variant.h"
#include "com_support/variant_references.h"

namespace kwohost {

using kwo::com_support::Bstr;
using kwo::com_support::ComObject;
using kwo::com_support::ComPtr;
using kwo::com_support::MakeObject;
using kwo::com_support::OwnedVariant;
using kwo::com_support::View;

/// Numbers that script authors know from the language's own run-time. docs/kwohost.md tells which member raises which.
enum class RuntimeError : unsigned short {
    /// A number or name that the member does not accept.
    InvalidProcedureCall = 5,
    Overflow = 6,
    /// No memory for a picture or a drawing.
    OutOfMemory = 7,
    /// No such item.
    SubscriptOutOfRange = 9,
    TypeMismatch = 13,
    /// A procedure calls itself without end.
    OutOfStackSpace = 28,
    /// No such file.
    FileNotFound = 53,
    /// The output cannot be written.
    DeviceError = 57,
    /// A file that cannot be written.
    PathAccess = 75,
    /// The null object, and a window that is gone.
    NoObjectSet = 91,
    /// A value that the property cannot have.
    InvalidPropertyValue = 380,
    /// No such item of a list.
    InvalidPropertyIndex = 381,
    /// A form that is minimised or maximised.
    CannotMove = 384,
    /// A value in place of an object.
    ObjectRequired = 424,
    /// An object that does not fit there.
    InvalidObjectUse = 425,
    /// No such class, or no window left.
    CannotCreateObject = 429,
    /// An object without a text.
    NoSuchMember = 438,
    /// An object without events for scripts.
    NoEvents = 459,
    /// A file or object that is not a picture.
    InvalidPicture = 481,
};

/// The HRESULT that scripts see as this number: 0x800A0000 + number. An engine turns it back for `Err.Number`.
constexpr HRESULT ToResult(RuntimeError error) {
    return MAKE_HRESULT(SEVERITY_ERROR, FACILITY_CONTROL, static_cast<unsigned short>(error));
}

/// A failure on its way to the script, thrown as an exception. Guarded ends it.
struct ScriptFailure {
    /// What the caller of a member gets.
    HRESULT code = E_FAIL;
    /// An empty one means a standard automation code: the language has its own words for it.
    std::wstring description = {};
};

/// Raises a standard code, without a description.
[[noreturn]] inline void Fail(HRESULT code) {
    throw ScriptFailure{code};
}
/// Raises one of our own errors. `description` is what `Err.Description` says; `Err.Source` is kwohost.
[[noreturn]] inline void Fail(RuntimeError error, std::wstring description) {
    throw ScriptFailure{ToResult(error), std::move(description)};
}
/// Raises a failure of the system; does nothing on success.
inline void Check(HRESULT result) {
    if (FAILED(result)) Fail(result);
}

/// A copy by value, through every level of reference.
/// Raises DISP_E_BADVARTYPE for a null reference and for references that are nested too deep, and what copying
/// returns.
inline OwnedVariant Copied(const VARIANT& value) {
    OwnedVariant copy;
    // VariantCopyInd follows one reference to a variant, and reads through a null pointer.
    VARIANT* const last = kwo::com_support::Innermost(const_cast<VARIANT*>(&value));
    if (!last || ((last->vt & VT_BYREF) && !last->byref)) Fail(DISP_E_BADVARTYPE);
    Check(VariantCopyInd(&copy, last));
    return copy;
}

}  // namespace kwohost
