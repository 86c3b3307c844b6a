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

/// Numbers that script authors know from the language's own run-time.
enum class RuntimeError : unsigned short {
    InvalidProcedureCall = 5,
    Overflow = 6,
    OutOfMemory = 7,
    SubscriptOutOfRange = 9,
    TypeMismatch = 13,
    OutOfStackSpace = 28,
    FileNotFound = 53,
    DeviceError = 57,
    PathAccess = 75,
    NoObjectSet = 91,
    InvalidPropertyValue = 380,
    CannotMove = 384,
    ObjectRequired = 424,
    InvalidObjectUse = 425,
    CannotCreateObject = 429,
    NoSuchMember = 438,
    NoEvents = 459,
    InvalidPicture = 481,
};

/// The HRESULT that scripts see as this number: 0x800A0000 + number.
constexpr HRESULT ToResult(RuntimeError error) {
    return MAKE_HRESULT(SEVERITY_ERROR, FACILITY_CONTROL, static_cast<unsigned short>(error));
}

/// A failure on its way to the script. One with an empty description is a standard automation code: the language
/// has its own words for it.
struct ScriptFailure {
    HRESULT code = E_FAIL;
    std::wstring description = {};
};

/// Raises a standard code.
[[noreturn]] inline void Fail(HRESULT code) {
    throw ScriptFailure{code};
}
/// Raises one of our own errors. `description` is what `Err.Description` says.
[[noreturn]] inline void Fail(RuntimeError error, std::wstring description) {
    throw ScriptFailure{ToResult(error), std::move(description)};
}
/// Raises a failure of the system.
inline void Check(HRESULT result) {
    if (FAILED(result)) Fail(result);
}

/// A copy by value, through every level of reference.
inline OwnedVariant Copied(const VARIANT& value) {
    OwnedVariant copy;
    // VariantCopyInd follows one reference to a variant, and reads through a null pointer.
    VARIANT* const last = kwo::com_support::Innermost(const_cast<VARIANT*>(&value));
    if (!last || ((last->vt & VT_BYREF) && !last->byref)) Fail(DISP_E_BADVARTYPE);
    Check(VariantCopyInd(&copy, last));
    return copy;
}

}  // namespace kwohost
